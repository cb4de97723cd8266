#include "scenario/recording_line_functions.h"

#include <string>

#include "base/text.h"
#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

using ports::LineResult;

std::string NamedHex(std::string_view name, std::uint32_t value) {
  return std::string(" ").append(name).append("=").append(base::Hex(value));
}

std::string CallText(ports::CallHandle call) { return " call=" + HandleText(call); }

/// dwTotalSize, as the caller has put it in front of the buffer.
std::string TotalSize(std::span<const std::uint8_t> buffer) {
  std::uint32_t total = 0;
  for (std::size_t index = 0; index < 4 && index < buffer.size(); ++index) {
    total |= static_cast<std::uint32_t>(buffer[index]) << (8 * index);
  }
  return Named("total", total);
}

}  // namespace

LineResult RecordingLineFunctions::Record(const std::string& call, LineResult result,
                                          const std::string& outcome) {
  transcript_.Add("line " + call + " = " + std::to_string(result) + outcome);
  return result;
}

std::string RecordingLineFunctions::QuotedAnsi(std::string_view bytes) const {
  return Quoted(code_page_.ToText(bytes));
}

LineResult RecordingLineFunctions::Initialize(ports::LineHandle& application, ports::LineCallback callback,
                                              std::string_view ansi_application_name,
                                              std::uint32_t& device_count) {
  const auto result =
      inner_.Initialize(application, std::move(callback), ansi_application_name, device_count);
  return Record("lineInitialize " + QuotedAnsi(ansi_application_name), result,
                Named("devices", device_count));
}

LineResult RecordingLineFunctions::NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                                       std::uint32_t lowest, std::uint32_t highest,
                                                       std::uint32_t& version) {
  const auto result = inner_.NegotiateApiVersion(application, device, lowest, highest, version);
  return Record("lineNegotiateAPIVersion" + Named("device", device) + NamedHex("low", lowest) +
                    NamedHex("high", highest),
                result);
}

LineResult RecordingLineFunctions::GetDevCaps(ports::LineHandle application, std::uint32_t device,
                                              std::uint32_t version, std::uint32_t extension_version,
                                              std::span<std::uint8_t> dev_caps) {
  const std::string call = "lineGetDevCaps" + Named("device", device) + TotalSize(dev_caps);
  return Record(call, inner_.GetDevCaps(application, device, version, extension_version, dev_caps));
}

LineResult RecordingLineFunctions::Open(ports::LineHandle application, std::uint32_t device,
                                        ports::LineHandle& line, std::uint32_t version,
                                        std::uint32_t extension_version, std::uint32_t callback_instance,
                                        std::uint32_t privileges, std::uint32_t media_modes) {
  const auto result = inner_.Open(application, device, line, version, extension_version, callback_instance,
                                  privileges, media_modes);
  return Record("lineOpen" + Named("device", device) + NamedHex("version", version) +
                    Named("privileges", privileges) + Named("media", media_modes),
                result);
}

LineResult RecordingLineFunctions::SetStatusMessages(ports::LineHandle line, std::uint32_t line_states,
                                                     std::uint32_t address_states) {
  const auto result = inner_.SetStatusMessages(line, line_states, address_states);
  return Record(
      "lineSetStatusMessages" + NamedHex("states", line_states) + Named("addresses", address_states), result);
}

LineResult RecordingLineFunctions::GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) {
  const std::string text = "lineGetCallInfo" + CallText(call) + TotalSize(call_info);
  return Record(text, inner_.GetCallInfo(call, call_info));
}

LineResult RecordingLineFunctions::Drop(ports::CallHandle call, std::string_view ansi_user_info,
                                        std::uint32_t size) {
  const auto result = inner_.Drop(call, ansi_user_info, size);
  return Record("lineDrop" + CallText(call) + " user=" + QuotedAnsi(ansi_user_info) + Named("size", size),
                result);
}

LineResult RecordingLineFunctions::DeallocateCall(ports::CallHandle call) {
  return Record("lineDeallocateCall" + CallText(call), inner_.DeallocateCall(call));
}

LineResult RecordingLineFunctions::TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                                    std::uint32_t version, std::string_view ansi_address,
                                                    std::uint32_t card, std::uint32_t options,
                                                    std::span<std::uint8_t> translate_output) {
  const std::string call = "lineTranslateAddress" + Named("device", device) + " " + QuotedAnsi(ansi_address) +
                           Named("card", card) + Named("options", options) + TotalSize(translate_output);
  return Record(call, inner_.TranslateAddress(application, device, version, ansi_address, card, options,
                                              translate_output));
}

LineResult RecordingLineFunctions::BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                                 std::uint32_t country_code) {
  const auto result = inner_.BlindTransfer(call, ansi_address, country_code);
  return Record(
      "lineBlindTransfer" + CallText(call) + " " + QuotedAnsi(ansi_address) + Named("country", country_code),
      result);
}

LineResult RecordingLineFunctions::Close(ports::LineHandle line) {
  return Record("lineClose", inner_.Close(line));
}

LineResult RecordingLineFunctions::Shutdown(ports::LineHandle application) {
  return Record("lineShutdown", inner_.Shutdown(application));
}

}  // namespace kestro::scenario
