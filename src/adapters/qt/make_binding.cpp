#include <QWidget>

#include "adapters/qt/bindings.h"
#include "forms/visit_control.h"

namespace kestro::adapters {

std::unique_ptr<ControlBinding> MakeBinding(forms::Control& control, QWidget& parent, BindingOwner& owner) {
  auto binding = forms::VisitControl(control, [&](auto& kind) { return Bind(kind, parent, owner); });
  binding->widget().setObjectName(ObjectName(control));
  return binding;
}

}  // namespace kestro::adapters
