#pragma once

#include "adapters/win32/front_end/control_binding.h"

namespace kestro::adapters::win32 {

// One function a control kind; each makes the native control inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> BindLabel(forms::Label&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindTextBox(forms::TextBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindComboBox(forms::ComboBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindCheckBox(forms::CheckBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindButton(forms::Button&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindFrame(forms::Frame&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindTabPages(forms::TabPages&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindPicture(forms::Picture&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindProgressBar(forms::ProgressBar&, HWND parent,
                                                              BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindGrid(forms::Grid&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> BindToolBar(forms::ToolBar&, HWND parent, BindingOwner&);

}  // namespace kestro::adapters::win32
