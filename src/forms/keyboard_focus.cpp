#include "forms/keyboard_focus.h"

#include <algorithm>

namespace kestro::forms {

bool TakesKeyboard(const Control& control) {
  const ControlKind kind = control.kind();
  return kind == ControlKind::kButton || kind == ControlKind::kTextBox || kind == ControlKind::kComboBox ||
         kind == ControlKind::kCheckBox || kind == ControlKind::kGrid;
}

bool CanHaveKeyboard(const Control& control) { return TakesKeyboard(control) && control.Reachable(); }

Control* KeyboardPlaceFrom(const Form& form, const Control* start) {
  std::vector<Control*> order = form.controls();
  std::rotate(order.begin(), std::find(order.begin(), order.end(), start), order.end());
  const auto place = std::find_if(order.begin(), order.end(),
                                  [](const Control* control) { return CanHaveKeyboard(*control); });
  return place == order.end() ? nullptr : *place;
}

}  // namespace kestro::forms
