#include "adapters/win32/front_end/bindings.h"
#include "forms/visit_control.h"

namespace kestro::adapters::win32 {

std::unique_ptr<ControlBinding> MakeBinding(forms::Control& control, HWND parent, BindingOwner& owner) {
  return forms::VisitControl(control, [&](auto& kind) { return Bind(kind, parent, owner); });
}

}  // namespace kestro::adapters::win32
