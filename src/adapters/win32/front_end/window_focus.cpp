#include <algorithm>

#include "adapters/win32/front_end/window.h"
#include "base/scope_value.h"

// Where the keyboard is inside a window. The rules are the program's, not the
// system's: the same on every front end.

namespace kestro::adapters::win32 {
namespace {

using forms::Control;
using forms::ControlKind;

bool TakesKeyboard(const Control& control) {
  const ControlKind kind = control.kind();
  return kind == ControlKind::kButton || kind == ControlKind::kTextBox || kind == ControlKind::kComboBox ||
         kind == ControlKind::kCheckBox || kind == ControlKind::kGrid;
}

}  // namespace

bool Window::CanHaveFocus(const Control& control) const {
  return TakesKeyboard(control) && control.Reachable();
}

void Window::FocusControl(const Control& control) {
  if (CanHaveFocus(control)) GiveFocus(&control);
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
  const auto& controls = form_->controls();
  const auto first = std::find_if(controls.begin(), controls.end(),
                                  [this](const Control* control) { return CanHaveFocus(*control); });
  if (first != controls.end()) GiveFocus(*first);
}

/// A control that can no longer have the keyboard hands it to the next one that can.
void Window::MoveFocusOn() {
  if (form_ == nullptr || focus_ == nullptr || focus_->Reachable()) return;
  std::vector<const Control*> candidates(form_->controls().begin(), form_->controls().end());
  const auto place = std::find(candidates.begin(), candidates.end(), focus_);
  std::rotate(candidates.begin(), place, candidates.end());
  const auto next = std::find_if(candidates.begin(), candidates.end(),
                                 [this](const Control* control) { return CanHaveFocus(*control); });
  GiveFocus(next == candidates.end() ? nullptr : *next);
}

/// The user went to another control with the mouse.
void Window::TakeFocusFrom(HWND focused) {
  if (giving_focus_) return;
  const ControlBinding* binding = BindingOf(focused);
  if (binding == nullptr || !TakesKeyboard(binding->control()) || !binding->control().Reachable()) return;
  focus_ = &binding->control();
  MarkDefaultButton();
}

const Control* Window::FocusedControl() const {
  if (GetActiveWindow() != window()) return focus_;
  const ControlBinding* binding = BindingOf(GetFocus());
  if (binding == nullptr || !TakesKeyboard(binding->control()))
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
