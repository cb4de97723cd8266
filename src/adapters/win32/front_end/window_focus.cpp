#include "adapters/win32/front_end/window.h"
#include "base/scope_value.h"
#include "forms/keyboard_focus.h"

// Where the keyboard is inside a window. The rules are the program's, not the
// system's: the same on every front end.

namespace kestro::adapters::win32 {

using forms::Control;
using forms::ControlKind;

void Window::FocusControl(const Control& control) {
  if (forms::CanHaveKeyboard(control)) GiveFocus(&control);
}

/// A window that has not the keyboard remembers where it will be.
void Window::GiveFocus(const Control* control) {
  focus_ = control;
  if (GetActiveWindow() == window()) {
    const base::ScopeValue giving(giving_focus_, true);
    const ControlBinding* binding = control == nullptr ? nullptr : Binding(*control);
    const HWND target = binding == nullptr ? window() : binding->window();
    const HWND focused = GetFocus();
    if (focused != target && IsChild(target, focused) == 0) SetFocus(target);
    if (binding == nullptr && focused != window()) SetFocus(window());
  }
  MarkDefaultButton();
}

void Window::GiveFirstFocus() {
  if (focus_ != nullptr) return;
  if (const Control* first = forms::KeyboardPlaceFrom(*form_, nullptr)) GiveFocus(first);
}

/// A control that can no longer have the keyboard hands it to the next one that can.
void Window::MoveFocusOn() {
  if (form_ == nullptr || focus_ == nullptr || focus_->Reachable()) return;
  GiveFocus(forms::KeyboardPlaceFrom(*form_, focus_));
}

/// The user went to another control with the mouse.
void Window::TakeFocusFrom(HWND focused) {
  if (giving_focus_) return;
  const ControlBinding* binding = BindingOf(focused);
  if (binding == nullptr || !forms::TakesKeyboard(binding->control()) || !binding->control().Reachable())
    return;
  focus_ = &binding->control();
  MarkDefaultButton();
}

const Control* Window::FocusedControl() const {
  if (GetActiveWindow() != window()) return focus_;
  const ControlBinding* binding = BindingOf(GetFocus());
  if (binding == nullptr || !forms::TakesKeyboard(binding->control()))
    return GetFocus() == window() ? nullptr : focus_;
  return &binding->control();
}

/// The button that Enter presses stands out: the one with the keyboard, else the default button.
void Window::MarkDefaultButton() {
  const bool button_has_it = focus_ != nullptr && focus_->kind() == ControlKind::kButton;
  for (const auto& binding : bindings_) {
    const auto* button = dynamic_cast<const forms::Button*>(&binding->control());
    if (button == nullptr) continue;
    const bool marked = button_has_it ? button == focus_ : button->role() == forms::Button::Role::kDefault;
    const LONG_PTR style = GetWindowLongPtrW(binding->window(), GWL_STYLE);
    if (((style & BS_TYPEMASK) == BS_DEFPUSHBUTTON) == marked) continue;
    const WPARAM look = BS_MULTILINE | BS_NOTIFY | (marked ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
    SendMessageW(binding->window(), BM_SETSTYLE, look, TRUE);
  }
}

}  // namespace kestro::adapters::win32
