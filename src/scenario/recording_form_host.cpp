#include "scenario/recording_form_host.h"

#include <algorithm>
#include <utility>

#include "base/scope_value.h"
#include "forms/modal_scope.h"
#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

std::string WindowLine(const forms::Form& form, const std::string& event) {
  return "window " + form.name() + " " + event;
}

}  // namespace

std::string RecordingFormHost::WindowName(ports::WindowHandle window) const {
  const auto found = windows_.find(window);
  return found == windows_.end() ? std::string() : found->second->name();
}

bool RecordingFormHost::InUsersReach(const forms::Form& form) const {
  return form.visible() && (modal_.empty() || modal_.back() == &form);
}

std::vector<forms::Form*> RecordingFormHost::TakeAppeared() { return std::exchange(appeared_, {}); }

void RecordingFormHost::BroughtToFront(ports::WindowHandle window) {
  const auto found = windows_.find(window);
  if (found != windows_.end()) Appeared(*found->second);
}

void RecordingFormHost::Appeared(forms::Form& form) {
  if (std::find(appeared_.begin(), appeared_.end(), &form) == appeared_.end()) appeared_.push_back(&form);
}

forms::WindowHandle RecordingFormHost::Load(forms::Form& form) {
  const forms::WindowHandle handle = inner_.Load(form);
  windows_[handle] = &form;
  return handle;
}

void RecordingFormHost::Unload(forms::Form& form) {
  transcript_.Add(WindowLine(form, "unloaded"));
  std::erase_if(windows_, [&](const auto& window) { return window.second == &form; });
  std::erase(appeared_, &form);
  inner_.Unload(form);
}

void RecordingFormHost::Show(forms::Form& form) {
  std::string line = WindowLine(form, "shown");
  if (form.placed()) line += Named("left", form.left()) + Named("top", form.top());
  transcript_.Add(std::move(line));
  Appeared(form);
  inner_.Show(form);
}

void RecordingFormHost::Hide(forms::Form& form) {
  transcript_.Add(WindowLine(form, "hidden"));
  inner_.Hide(form);
}

void RecordingFormHost::ShowModal(forms::Form& form, forms::Form* owner) {
  transcript_.Add(WindowLine(form, "modal"));
  Appeared(form);
  const forms::ModalScope scope(modal_, form);
  if (modal_hook_) modal_hook_(form);
  inner_.ShowModal(form, owner);
}

void RecordingFormHost::PopupMenu(forms::Form& form, forms::MenuItem& menu) {
  transcript_.Add("menu " + menu.name() + " opened");
  inner_.PopupMenu(form, menu);
}

void RecordingFormHost::SetPointer(forms::Pointer pointer) {
  transcript_.Add(pointer == forms::Pointer::kHourglass ? "pointer hourglass" : "pointer default");
  inner_.SetPointer(pointer);
}

void RecordingFormHost::DoEvents() {
  {
    const base::ScopeValue pause(in_pause_, true);
    inner_.DoEvents();
  }
  if (pause_hook_) pause_hook_();
}

bool RecordingForegroundWindows::SetForegroundWindow(ports::WindowHandle window) {
  if (!inner_.SetForegroundWindow(window)) return false;
  transcript_.Add("window " + host_.WindowName(window) + " foreground");
  host_.BroughtToFront(window);
  return true;
}

}  // namespace kestro::scenario
