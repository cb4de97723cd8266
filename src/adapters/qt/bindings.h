#pragma once

#include "adapters/qt/control_binding.h"
#include "forms/controls.h"
#include "forms/grid.h"

namespace kestro::adapters {

// One overload a control kind; each makes the widget inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Label&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::TextBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ComboBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::CheckBox&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Button&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Frame&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::TabPages&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Picture&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ProgressBar&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::Grid&, QWidget& parent, BindingOwner&);
[[nodiscard]] std::unique_ptr<ControlBinding> Bind(forms::ToolBar&, QWidget& parent, BindingOwner&);

}  // namespace kestro::adapters
