#include <algorithm>
#include <utility>

#include "exchange/exchange.h"
#include "exchange/exchange_structures.h"

// The application's side: the line functions. An injected failure comes first of all.

namespace kestro::exchange {

ports::LineResult Exchange::Initialize(ports::LineHandle& application, ports::LineCallback callback,
                                       std::string_view /*ansi_application_name*/,
                                       std::uint32_t& device_count) {
  if (const auto failure = InjectedFailure("lineInitialize")) return *failure;
  if (!callback) return ports::kLineErrInvalidPointer;
  callback_ = std::move(callback);
  application_ = ++last_application_;
  application = application_;
  device_count = static_cast<std::uint32_t>(devices_.size());
  return 0;
}

ports::LineResult Exchange::CheckDevice(ports::LineHandle application, std::uint32_t device,
                                        std::uint32_t version) const {
  if (!IsCurrent(application)) return ports::kLineErrInvalidAppHandle;
  if (device >= devices_.size()) return ports::kLineErrBadDeviceId;
  return version == ports::kLineApiVersion ? 0 : ports::kLineErrIncompatibleApiVersion;
}

ports::LineResult Exchange::NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                                std::uint32_t lowest, std::uint32_t highest,
                                                std::uint32_t& version) {
  if (const auto failure = InjectedFailure("lineNegotiateAPIVersion")) return *failure;
  const bool in_range = lowest <= ports::kLineApiVersion && ports::kLineApiVersion <= highest;
  const auto result = CheckDevice(application, device, in_range ? ports::kLineApiVersion : 0);
  if (result == 0) version = ports::kLineApiVersion;
  return result;
}

ports::LineResult Exchange::GetDevCaps(ports::LineHandle application, std::uint32_t device,
                                       std::uint32_t version, std::uint32_t /*extension_version*/,
                                       std::span<std::uint8_t> dev_caps) {
  if (const auto failure = InjectedFailure("lineGetDevCaps")) return *failure;
  if (const auto result = CheckDevice(application, device, version); result != 0) return result;
  return WriteDevCaps(devices_[device], device, dev_caps);
}

ports::LineResult Exchange::Open(ports::LineHandle application, std::uint32_t device, ports::LineHandle& line,
                                 std::uint32_t version, std::uint32_t /*extension_version*/,
                                 std::uint32_t callback_instance, std::uint32_t /*privileges*/,
                                 std::uint32_t /*media_modes*/) {
  if (const auto failure = InjectedFailure("lineOpen")) return *failure;
  if (const auto result = CheckDevice(application, device, version); result != 0) return result;
  line_ = ++last_line_;
  open_device_ = device;
  callback_instance_ = callback_instance;
  line = line_;
  return 0;
}

ports::LineResult Exchange::SetStatusMessages(ports::LineHandle line, std::uint32_t /*line_states*/,
                                              std::uint32_t /*address_states*/) {
  if (const auto failure = InjectedFailure("lineSetStatusMessages")) return *failure;
  return line_open() && line == line_ ? 0 : ports::kLineErrInvalidLineHandle;
}

ports::LineResult Exchange::GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) {
  if (const auto failure = InjectedFailure("lineGetCallInfo")) return *failure;
  if (const auto raw = raw_call_info_.find(call); raw != raw_call_info_.end()) {
    const auto& bytes = raw->second;
    std::copy_n(bytes.begin(), std::min(bytes.size(), call_info.size()), call_info.begin());
    return 0;
  }
  const Call* const held = HeldCall(call);
  return held == nullptr ? ports::kLineErrInvalidCallHandle
                         : WriteCallInfo(*held, line_, open_device_, call_info);
}

ports::LineResult Exchange::Drop(ports::CallHandle call, std::string_view /*ansi_user_info*/,
                                 std::uint32_t /*size*/) {
  if (const auto failure = InjectedFailure("lineDrop")) return *failure;
  if (HeldCall(call) == nullptr) return ports::kLineErrInvalidCallHandle;
  const std::int32_t request = NextRequest();
  AnswerLater(request, call, 0);
  return request;
}

ports::LineResult Exchange::DeallocateCall(ports::CallHandle call) {
  if (const auto failure = InjectedFailure("lineDeallocateCall")) return *failure;
  Call* const held = HeldCall(call);
  if (held == nullptr) return ports::kLineErrInvalidCallHandle;
  held->released = true;
  ForgetIfOver(call);
  return 0;
}

ports::LineResult Exchange::TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                             std::uint32_t version, std::string_view ansi_address,
                                             std::uint32_t /*card*/, std::uint32_t /*options*/,
                                             std::span<std::uint8_t> translate_output) {
  if (const auto failure = InjectedFailure("lineTranslateAddress")) return *failure;
  if (const auto result = CheckDevice(application, device, version); result != 0) return result;
  return WriteTranslateOutput(ansi_address, translate_output);
}

ports::LineResult Exchange::BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                          std::uint32_t /*country_code*/) {
  if (const auto failure = InjectedFailure("lineBlindTransfer")) return *failure;
  if (HeldCall(call) == nullptr) return ports::kLineErrInvalidCallHandle;
  if (ansi_address.empty()) return ports::kLineErrInvalidAddress;
  const std::int32_t request = NextRequest();
  AnswerLater(request, call, IsDialable(ansi_address) ? 0 : ports::kLineErrInvalidAddress);
  return request;
}

ports::LineResult Exchange::Close(ports::LineHandle line) {
  if (const auto failure = InjectedFailure("lineClose")) return *failure;
  if (!line_open() || line != line_) return ports::kLineErrInvalidLineHandle;
  CloseOpenLine();
  return 0;
}

ports::LineResult Exchange::Shutdown(ports::LineHandle application) {
  if (const auto failure = InjectedFailure("lineShutdown")) return *failure;
  if (!IsCurrent(application)) return ports::kLineErrInvalidAppHandle;
  CloseOpenLine();
  callback_ = nullptr;
  application_ = 0;
  session_ = std::make_shared<const bool>(true);
  return 0;
}

void Exchange::CloseOpenLine() {
  line_ = 0;
  callback_instance_ = 0;
  std::erase_if(calls_, [](const auto& entry) { return entry.second.origin != kOriginOutbound; });
}

}  // namespace kestro::exchange
