#include "forms/control.h"

#include "forms/form.h"

namespace kestro::forms {

Control::Control(Form& form, Container* parent, std::string_view name, std::optional<int> array_index)
    : form_(form), parent_(parent), name_(name), array_index_(array_index) {
  form.Register(*this);
}

void Control::SetVisible(bool visible) { Assign(visible_, visible); }

void Control::SetEnabled(bool enabled) { Assign(enabled_, enabled); }

void Control::SetFocus() { form_.FocusControl(*this); }

void Control::Changed() { form_.ControlChanged(*this); }

bool Control::ParentReachable() const { return parent_ == nullptr || parent_->Reachable(); }

bool Control::Reachable() const { return visible_ && enabled_ && ParentReachable(); }

}  // namespace kestro::forms
