#include "telephony/tapi_module.h"

#include "ports/byte_buffer.h"

namespace kestro::telephony {

std::string TAPIModule::GetTAPIStructString(std::span<const std::uint8_t> structure, std::uint32_t offset,
                                            std::uint32_t size) const {
  return procedure_("GetTAPIStructString", [&]() -> std::string {
    if (static_cast<std::int32_t>(size) < 1 || offset == 0) return {};
    return code_page_.ToText(ports::ReadBytes(structure, offset, size));
  });
}

}  // namespace kestro::telephony
