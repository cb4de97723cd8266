#include "faults/failing_line_functions.h"

#include <utility>

#include "ports/line_structures.h"

namespace kestro::faults {

using ports::LineResult;

namespace {

constexpr LineResult kFailed = ports::kLineErrOperationFailed;

}  // namespace

LineResult FailingLineFunctions::Initialize(ports::LineHandle& application, ports::LineCallback callback,
                                            std::string_view name, std::uint32_t& device_count) {
  return Fails() ? kFailed : inner_.Initialize(application, std::move(callback), name, device_count);
}

LineResult FailingLineFunctions::NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                                     std::uint32_t lowest, std::uint32_t highest,
                                                     std::uint32_t& version) {
  return Fails() ? kFailed : inner_.NegotiateApiVersion(application, device, lowest, highest, version);
}

LineResult FailingLineFunctions::GetDevCaps(ports::LineHandle application, std::uint32_t device,
                                            std::uint32_t version, std::uint32_t extension_version,
                                            std::span<std::uint8_t> dev_caps) {
  return Fails() ? kFailed : inner_.GetDevCaps(application, device, version, extension_version, dev_caps);
}

LineResult FailingLineFunctions::Open(ports::LineHandle application, std::uint32_t device,
                                      ports::LineHandle& line, std::uint32_t version,
                                      std::uint32_t extension_version, std::uint32_t callback_instance,
                                      std::uint32_t privileges, std::uint32_t media_modes) {
  return Fails() ? kFailed
                 : inner_.Open(application, device, line, version, extension_version, callback_instance,
                               privileges, media_modes);
}

LineResult FailingLineFunctions::SetStatusMessages(ports::LineHandle line, std::uint32_t line_states,
                                                   std::uint32_t address_states) {
  return Fails() ? kFailed : inner_.SetStatusMessages(line, line_states, address_states);
}

LineResult FailingLineFunctions::GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) {
  return Fails() ? kFailed : inner_.GetCallInfo(call, call_info);
}

LineResult FailingLineFunctions::Drop(ports::CallHandle call, std::string_view ansi_user_info,
                                      std::uint32_t size) {
  return Fails() ? kFailed : inner_.Drop(call, ansi_user_info, size);
}

LineResult FailingLineFunctions::DeallocateCall(ports::CallHandle call) {
  return Fails() ? kFailed : inner_.DeallocateCall(call);
}

LineResult FailingLineFunctions::TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                                  std::uint32_t version, std::string_view ansi_address,
                                                  std::uint32_t card, std::uint32_t options,
                                                  std::span<std::uint8_t> translate_output) {
  return Fails() ? kFailed
                 : inner_.TranslateAddress(application, device, version, ansi_address, card, options,
                                           translate_output);
}

LineResult FailingLineFunctions::BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                               std::uint32_t country_code) {
  return Fails() ? kFailed : inner_.BlindTransfer(call, ansi_address, country_code);
}

LineResult FailingLineFunctions::Close(ports::LineHandle line) {
  return Fails() ? kFailed : inner_.Close(line);
}

LineResult FailingLineFunctions::Shutdown(ports::LineHandle application) {
  return Fails() ? kFailed : inner_.Shutdown(application);
}

}  // namespace kestro::faults
