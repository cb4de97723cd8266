#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "forms/form.h"
#include "forms/form_host.h"

namespace kestro::adapters {

/// A front end that draws nothing: it keeps what a screen would show (which
/// windows are there, in front, modal, where the keyboard is) and nothing more.
/// A window becomes active, and learns it, as soon as it is shown or brought to
/// the front; when the active window goes, the one behind it becomes active.
class HeadlessFormHost : public forms::FormHost {
 public:
  void SetScreen(forms::ScreenSize screen) { screen_ = screen; }
  /// Runs the task from the event loop: at the next DoEvents, or while a modal window waits.
  void Post(std::function<void()> task) { tasks_.push_back(std::move(task)); }

  forms::WindowHandle Load(forms::Form& form) override;
  void Unload(forms::Form& form) override;
  void Show(forms::Form& form) override;
  void Hide(forms::Form& form) override;
  /// Throws std::logic_error when the window waits and no task is left that could close it.
  void ShowModal(forms::Form& form, forms::Form* owner) override;
  void WindowChanged(forms::Form& form) override;
  void ControlChanged(forms::Form& form, forms::Control& control) override;
  void MenuChanged(forms::Form& form, forms::MenuItem& parent) override;
  void FocusControl(forms::Form& form, forms::Control& control) override;
  void PopupMenu(forms::Form& form, forms::MenuItem& menu) override;
  [[nodiscard]] forms::ScreenSize Screen() const override { return screen_; }
  void SetPointer(forms::Pointer pointer) override { pointer_ = pointer; }
  void DoEvents() override;

  [[nodiscard]] forms::Pointer pointer() const { return pointer_; }
  /// Loaded window of that handle, nullptr for another number.
  [[nodiscard]] forms::Form* FindWindow(forms::WindowHandle handle) const;
  /// The innermost modal window, nullptr when none is open.
  [[nodiscard]] forms::Form* modal_window() const { return modal_.empty() ? nullptr : modal_.back(); }
  /// The window in front, nullptr when none is shown.
  [[nodiscard]] forms::Form* active_window() const { return shown_.empty() ? nullptr : shown_.back(); }
  /// The control of the window that has the keyboard, nullptr when none has.
  [[nodiscard]] forms::Control* Focus(forms::Form& form) const;
  /// Puts a shown window in front of the others; false when it is not shown.
  bool BringToFront(forms::Form& form);

 private:
  struct Window {
    forms::WindowHandle handle = 0;
    bool has_been_shown = false;
    forms::Control* focus = nullptr;
  };

  void GiveFirstFocus(forms::Form& form);
  void HandOnFocus(forms::Form& form);
  /// `tell`: the window that is in front afterwards learns it.
  void RemoveFromScreen(forms::Form& form, bool tell);
  void RunOneTask();

  forms::ScreenSize screen_;
  forms::Pointer pointer_ = forms::Pointer::kDefault;
  forms::WindowHandle last_handle_ = 0;
  std::map<forms::Form*, Window> windows_;
  std::vector<forms::Form*> shown_;  // from the back to the front
  std::vector<forms::Form*> modal_;  // from the outer to the inner
  std::deque<std::function<void()>> tasks_;
};

}  // namespace kestro::adapters
