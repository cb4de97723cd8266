#pragma once

#include "adapters/win32/front_end/control_binding.h"

namespace kestro::adapters::win32 {

// One overload a control kind; each makes the native control inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Label&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::TextBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ComboBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::CheckBox&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Button&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Frame&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::TabPages&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Picture&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ProgressBar&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Grid&, HWND parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ToolBar&, HWND parent, BindingOwner&);

}  // namespace kestro::adapters::win32
