#pragma once

#include <stdexcept>

#include "forms/controls.h"
#include "forms/grid.h"

namespace kestro::forms {

/// Calls `visit` with the control as what it is (Label&, Grid&, ...) and returns
/// what that returns. For what stands in a window: throws std::logic_error for a menu entry.
template <class Visit>
auto VisitControl(Control& control, Visit visit) {
  switch (control.kind()) {
    case ControlKind::kLabel:
      return visit(dynamic_cast<Label&>(control));
    case ControlKind::kTextBox:
      return visit(dynamic_cast<TextBox&>(control));
    case ControlKind::kComboBox:
      return visit(dynamic_cast<ComboBox&>(control));
    case ControlKind::kCheckBox:
      return visit(dynamic_cast<CheckBox&>(control));
    case ControlKind::kButton:
      return visit(dynamic_cast<Button&>(control));
    case ControlKind::kFrame:
      return visit(dynamic_cast<Frame&>(control));
    case ControlKind::kTabPages:
      return visit(dynamic_cast<TabPages&>(control));
    case ControlKind::kPicture:
      return visit(dynamic_cast<Picture&>(control));
    case ControlKind::kProgressBar:
      return visit(dynamic_cast<ProgressBar&>(control));
    case ControlKind::kGrid:
      return visit(dynamic_cast<Grid&>(control));
    case ControlKind::kToolBar:
      return visit(dynamic_cast<ToolBar&>(control));
    case ControlKind::kMenuItem:
      break;
  }
  throw std::logic_error("a menu entry stands in no window: " + control.name());
}

}  // namespace kestro::forms
