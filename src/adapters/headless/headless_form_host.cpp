#include "adapters/headless/headless_form_host.h"

#include <algorithm>
#include <stdexcept>

namespace kestro::adapters {

using forms::Control;
using forms::ControlKind;
using forms::Form;

bool TakesKeyboard(const Control& control) {
  switch (control.kind()) {
    case ControlKind::kButton:
    case ControlKind::kTextBox:
    case ControlKind::kComboBox:
    case ControlKind::kCheckBox:
    case ControlKind::kGrid:
      return true;
    default:
      return false;
  }
}

forms::WindowHandle HeadlessFormHost::Load(Form& form) {
  windows_[&form] = {++last_handle_, false, nullptr};
  return last_handle_;
}

void HeadlessFormHost::Unload(Form& form) {
  windows_.erase(&form);
  // A form that is still loaded is being destroyed with the application: no window hears of it any more.
  RemoveFromScreen(form, !form.loaded());
}

void HeadlessFormHost::Show(Form& form) {
  GiveFirstFocus(form);
  shown_.push_back(&form);
  form.Activated();
}

void HeadlessFormHost::Hide(Form& form) { RemoveFromScreen(form, true); }

void HeadlessFormHost::ShowModal(Form& form, Form* /*owner*/) {
  struct ModalScope {
    std::vector<Form*>& stack;
    ~ModalScope() { stack.pop_back(); }
  };
  modal_.push_back(&form);
  const ModalScope scope{modal_};
  Show(form);
  while (form.visible()) {
    if (tasks_.empty()) throw std::logic_error("nothing is left to close the window " + form.name());
    RunOneTask();
  }
}

void HeadlessFormHost::WindowChanged(Form& /*form*/) {}

void HeadlessFormHost::ControlChanged(Form& form, Control& /*control*/) { HandOnFocus(form); }

void HeadlessFormHost::MenuChanged(Form& /*form*/, forms::MenuItem& /*parent*/) {}

void HeadlessFormHost::FocusControl(Form& form, Control& control) {
  const auto window = windows_.find(&form);
  if (window != windows_.end() && TakesKeyboard(control) && control.Reachable())
    window->second.focus = &control;
}

void HeadlessFormHost::PopupMenu(Form& /*form*/, forms::MenuItem& /*menu*/) {}

void HeadlessFormHost::DoEvents() {
  while (!tasks_.empty()) RunOneTask();
}

Form* HeadlessFormHost::FindWindow(forms::WindowHandle handle) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& entry) { return entry.second.handle == handle; });
  return found == windows_.end() ? nullptr : found->first;
}

Control* HeadlessFormHost::Focus(Form& form) const {
  const auto window = windows_.find(&form);
  return window == windows_.end() ? nullptr : window->second.focus;
}

bool HeadlessFormHost::BringToFront(Form& form) {
  const auto place = std::find(shown_.begin(), shown_.end(), &form);
  if (place == shown_.end()) return false;
  if (active_window() == &form) return true;
  std::rotate(place, std::next(place), shown_.end());
  form.Activated();
  return true;
}

void HeadlessFormHost::GiveFirstFocus(Form& form) {
  Window& window = windows_[&form];
  if (window.has_been_shown) return;
  window.has_been_shown = true;
  if (window.focus != nullptr) return;
  const auto& controls = form.controls();
  const auto first = std::find_if(controls.begin(), controls.end(), [](const Control* control) {
    return TakesKeyboard(*control) && control->Reachable();
  });
  if (first != controls.end()) window.focus = *first;
}

void HeadlessFormHost::HandOnFocus(Form& form) {
  Control*& focus = windows_[&form].focus;
  if (focus == nullptr || focus->Reachable()) return;
  const auto& controls = form.controls();
  const auto old_place = std::find(controls.begin(), controls.end(), focus);
  const auto can_have_it = [](const Control* control) {
    return TakesKeyboard(*control) && control->Reachable();
  };
  auto next = std::find_if(old_place, controls.end(), can_have_it);
  if (next == controls.end()) {
    next = std::find_if(controls.begin(), old_place, can_have_it);
    if (next == old_place) next = controls.end();
  }
  focus = next == controls.end() ? nullptr : *next;
}

void HeadlessFormHost::RemoveFromScreen(Form& form, bool tell) {
  const bool was_active = active_window() == &form;
  std::erase(shown_, &form);
  if (tell && was_active && !shown_.empty()) shown_.back()->Activated();
}

void HeadlessFormHost::RunOneTask() {
  const auto task = std::move(tasks_.front());
  tasks_.pop_front();
  task();
}

}  // namespace kestro::adapters
