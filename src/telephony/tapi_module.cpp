#include "telephony/tapi_module.h"

namespace kestro::telephony {

std::string TAPIModule::GetTAPIStructString(std::span<const std::uint8_t> structure, std::uint32_t offset,
                                            std::uint32_t size) const {
  return procedure_("GetTAPIStructString", [&]() -> std::string {
    if (static_cast<std::int32_t>(size) < 1 || offset == 0) return {};
    if (offset > structure.size() || size > structure.size() - offset) base::RaiseSubscriptOutOfRange();
    const auto bytes = structure.subspan(offset, size);
    return code_page_.ToText(std::string(bytes.begin(), bytes.end()));
  });
}

}  // namespace kestro::telephony
