#include <stdexcept>

#include "adapters/win32/front_end/bindings.h"

namespace kestro::adapters::win32 {

std::unique_ptr<ControlBinding> MakeBinding(forms::Control& control, HWND parent, BindingOwner& owner) {
  using forms::ControlKind;
  switch (control.kind()) {
    case ControlKind::kLabel:
      return BindLabel(dynamic_cast<forms::Label&>(control), parent, owner);
    case ControlKind::kTextBox:
      return BindTextBox(dynamic_cast<forms::TextBox&>(control), parent, owner);
    case ControlKind::kComboBox:
      return BindComboBox(dynamic_cast<forms::ComboBox&>(control), parent, owner);
    case ControlKind::kCheckBox:
      return BindCheckBox(dynamic_cast<forms::CheckBox&>(control), parent, owner);
    case ControlKind::kButton:
      return BindButton(dynamic_cast<forms::Button&>(control), parent, owner);
    case ControlKind::kFrame:
      return BindFrame(dynamic_cast<forms::Frame&>(control), parent, owner);
    case ControlKind::kTabPages:
      return BindTabPages(dynamic_cast<forms::TabPages&>(control), parent, owner);
    case ControlKind::kPicture:
      return BindPicture(dynamic_cast<forms::Picture&>(control), parent, owner);
    case ControlKind::kProgressBar:
      return BindProgressBar(dynamic_cast<forms::ProgressBar&>(control), parent, owner);
    case ControlKind::kGrid:
      return BindGrid(dynamic_cast<forms::Grid&>(control), parent, owner);
    case ControlKind::kToolBar:
      return BindToolBar(dynamic_cast<forms::ToolBar&>(control), parent, owner);
    case ControlKind::kMenuItem:
      break;
  }
  throw std::logic_error("no native control for the control " + control.name());
}

}  // namespace kestro::adapters::win32
