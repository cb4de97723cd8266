#include "adapters/headless/headless_form_host.h"

#include <algorithm>
#include <stdexcept>

#include "forms/keyboard_focus.h"
#include "forms/modal_scope.h"

namespace kestro::adapters {

using forms::Control;
using forms::Form;

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
  const forms::ModalScope scope(modal_, form);
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
  if (window != windows_.end() && forms::CanHaveKeyboard(control)) window->second.focus = &control;
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
  window.focus = forms::KeyboardPlaceFrom(form, nullptr);
}

void HeadlessFormHost::HandOnFocus(Form& form) {
  Control*& focus = windows_[&form].focus;
  if (focus == nullptr || focus->Reachable()) return;
  focus = forms::KeyboardPlaceFrom(form, focus);
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
