#pragma once

#include "adapters/qt/control_binding.h"
#include "forms/controls.h"
#include "forms/grid.h"

namespace kestro::adapters {

// One function a control kind; each makes the widget inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> BindLabel(forms::Label&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindTextBox(forms::TextBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindComboBox(forms::ComboBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindCheckBox(forms::CheckBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindButton(forms::Button&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindFrame(forms::Frame&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindTabPages(forms::TabPages&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindPicture(forms::Picture&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindProgressBar(forms::ProgressBar&, QWidget& parent,
                                                              BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindGrid(forms::Grid&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindToolBar(forms::ToolBar&, QWidget& parent, BindingOwner&);

}  // namespace kestro::adapters
