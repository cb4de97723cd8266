#include "exchange/exchange_structures.h"

#include <optional>
#include <string>

#include "exchange/structure_writer.h"

namespace kestro::exchange {

namespace info = ports::line_call_info;
namespace caps = ports::line_dev_caps;
namespace translation = ports::line_translate_output;

namespace {

constexpr std::uint32_t kUnknownTrunk = 0xFFFFFFFF;
constexpr std::string_view kKeys = "0123456789ABCDabcd*#";
constexpr std::string_view kMarks = " -().,/+";

/// Fields of one party, from its flags on: size and offset of the number, then of the name.
void PutParty(StructureWriter& writer, std::size_t flags_field, const std::optional<std::string>& number,
              std::string_view name) {
  std::uint32_t flags = 0;
  if (number) {
    flags |= info::kPartyAddress;
    writer.PutText(flags_field + 4, flags_field + 8, *number);
  }
  if (!name.empty()) {
    flags |= info::kPartyName;
    writer.PutText(flags_field + 12, flags_field + 16, name);
  }
  writer.Put(flags_field, flags == 0 ? info::kPartyUnknown : flags);
}

}  // namespace

ports::LineResult WriteCallInfo(const Call& call, ports::LineHandle line, std::uint32_t device,
                                std::span<std::uint8_t> buffer) {
  StructureWriter writer(buffer, info::kFixedSize);
  if (!writer.fits()) return ports::kLineErrStructureTooSmall;
  writer.Put(info::kLine, line);
  writer.Put(info::kLineDeviceId, device);
  writer.Put(info::kBearerMode, caps::kBearerModeVoice);
  writer.Put(info::kMediaMode, ports::kMediaModeInteractiveVoice);
  writer.Put(info::kCallId, call.handle);
  writer.Put(info::kOrigin, call.origin);
  writer.Put(info::kReason, call.reason);
  writer.Put(info::kNumOwners, 1);
  writer.Put(info::kTrunk, kUnknownTrunk);
  PutParty(writer, info::kCallerIdFlags, call.caller_id, call.caller_name);
  PutParty(writer, info::kConnectedIdFlags, call.connected_id, {});
  writer.Finish();
  return 0;
}

ports::LineResult WriteDevCaps(const Device& device, std::uint32_t number, std::span<std::uint8_t> buffer) {
  StructureWriter writer(buffer, caps::kFixedSize);
  if (!writer.fits()) return ports::kLineErrStructureTooSmall;
  writer.Put(caps::kPermanentLineId, number);
  writer.Put(caps::kStringFormat, caps::kStringFormatAscii);
  writer.Put(caps::kAddressModes, caps::kAddressModeAddressId);
  writer.Put(caps::kNumAddresses, 1);
  writer.Put(caps::kBearerModes, caps::kBearerModeVoice);
  writer.Put(caps::kMediaModes, ports::kMediaModeInteractiveVoice);
  writer.Put(caps::kMaxNumActiveCalls, 1);
  writer.Put(caps::kLineStates, device.line_states);
  writer.PutText(caps::kProviderInfoSize, caps::kProviderInfoOffset, device.provider);
  writer.PutText(caps::kLineNameSize, caps::kLineNameOffset, device.name);
  writer.Finish();
  return 0;
}

ports::LineResult WriteTranslateOutput(std::string_view ansi_address, std::span<std::uint8_t> buffer) {
  StructureWriter writer(buffer, translation::kFixedSize);
  if (!writer.fits()) return ports::kLineErrStructureTooSmall;
  writer.PutText(translation::kDialableStringSize, translation::kDialableStringOffset, ansi_address);
  writer.PutText(translation::kDisplayableStringSize, translation::kDisplayableStringOffset, ansi_address);
  writer.Finish();
  return 0;
}

bool IsDialable(std::string_view ansi_address) {
  bool has_key = false;
  for (const char character : ansi_address) {
    const bool is_key = kKeys.find(character) != std::string_view::npos;
    if (!is_key && kMarks.find(character) == std::string_view::npos) return false;
    has_key = has_key || is_key;
  }
  return has_key;
}

}  // namespace kestro::exchange
