#include <limits>

#include "telephony/line_messages.h"
#include "telephony/tapi_functions_module.h"

// Decodes the messages of the line functions into the current call and the
// call events.

namespace kestro::telephony {

using ports::line_call_info::kBufferSize;
using ports::line_call_info::kCallerIdFlags;
using ports::line_call_info::kCallerIdOffset;
using ports::line_call_info::kCallerIdSize;
using ports::line_call_info::kConnectedIdFlags;
using ports::line_call_info::kConnectedIdOffset;
using ports::line_call_info::kConnectedIdSize;
using ports::line_call_info::kFixedSize;
using ports::line_call_info::kOrigin;
using ports::line_call_info::kOriginInternal;
using ports::line_call_info::kPartyAddress;
using ports::line_call_info::kReason;
using ports::line_call_info::kReasonTransfer;

namespace {

constexpr std::string_view kLineCallBack = "LineCallBack";
constexpr std::string_view kUnknownCaller = "UNKNOWN";

}  // namespace

void TAPIFunctionsModule::LineCallBack(const ports::LineMessage& message) {
  procedure_.Outermost(
      kLineCallBack, [&] { Dispatch(message); },
      [&](const base::RuntimeError& error) { receiver_.ShutDownApplication(error); });
}

void TAPIFunctionsModule::LogName(std::string_view procedure, std::string_view name) const {
  procedure_.Trace(procedure, name);
  procedure_.Log(procedure, std::string(procedure).append(" MESSAGE = ").append(name));
}

void TAPIFunctionsModule::Dispatch(const ports::LineMessage& message) {
  if (const auto name = LineMessageName(message.message); !name.empty()) LogName(kLineCallBack, name);
  switch (message.message) {
    case ports::kLineCallInfo:
      return OnCallInfo(message);
    case ports::kLineCallState:
      return LineCallStateProc(message);
    case ports::kLineDevState:
      return LineDevStateProc(message);
    case ports::kLineMonitorDigits:
      return LogName(kLineCallBack, "LINE_MONITORDIGITS -> " + std::to_string(LoWord(message.parameter1)));
    case ports::kLineReply:
      LogName(kLineCallBack, "LINE_REPLY -> " + std::to_string(message.parameter2));
      return OnReply(message.parameter2);
    default:
      if (LineMessageName(message.message).empty()) {
        LogName(kLineCallBack, "Unknown TAPI Event: " + std::to_string(message.message));
      }
  }
}

void TAPIFunctionsModule::OnCallInfo(const ports::LineMessage& message) {
  if (static_cast<std::uint32_t>(message.parameter1) == ports::kCallInfoStateCallerId) {
    LogName(kLineCallBack, "LINECALLINFOSTATE_CALLERID");
    GetCallerInfo(message.device, false);
  } else {
    LogName(kLineCallBack, "LINE_CALLINFO -> " + std::to_string(message.parameter1));
  }
}

void TAPIFunctionsModule::OnReply(std::int32_t result) {
  if (!call_.SwitchPending) {
    call_.SwitchFailed = false;
  } else if (result < 0) {
    messages_.Notice("103");
    call_.SwitchFailed = true;
    call_.SwitchPending = false;
  } else {
    const std::int32_t released = functions_.DeallocateCall(call_.CurrentCallHandle);
    if (released < 0) errors_.ProcessTAPIError(released);
    call_.SwitchFailed = false;
    call_.SwitchPending = false;
  }
}

void TAPIFunctionsModule::LineCallStateProc(const ports::LineMessage& message) {
  constexpr std::string_view kName = "LineCallStateProc";
  procedure_(kName, [&] {
    const auto state = static_cast<std::uint32_t>(message.parameter1);
    if (const auto name = CallStateName(state); !name.empty()) LogName(kName, name);
    switch (state) {
      case CallStateValue::kIdle:
        return OnIdle();
      case CallStateValue::kOffering:
        return OnOffering(message.device);
      case CallStateValue::kConnected:
        GetCallerInfo(message.device, true);
        return receiver_.OnCallAccept();
      case CallStateValue::kDisconnected:
        DropCall(false);
        return receiver_.OnCallDisconnect();
      default:
        return;
    }
  });
}

void TAPIFunctionsModule::OnIdle() {
  if (call_.SwitchFailed) return;  // the call is still the user's to see
  DropCall(false);
  receiver_.OnCallDisconnect();
}

void TAPIFunctionsModule::OnOffering(std::int32_t call) {
  call_.IsExternal = true;
  GetCallerInfo(call, false);
  call_.CurrentCallHandle = static_cast<std::uint32_t>(call);
  receiver_.OnIncommingCall();
}

void TAPIFunctionsModule::LineDevStateProc(const ports::LineMessage& message) {
  constexpr std::string_view kName = "LineDevStateProc";
  procedure_(kName, [&] {
    const auto name = LineDeviceStateName(static_cast<std::uint32_t>(message.parameter1));
    LogName(kName, name.empty() ? "LINEDEVSTATE_UNKNOWN" : name);
  });
}

void TAPIFunctionsModule::GetCallerInfo(std::int32_t call, bool connected) {
  constexpr std::string_view kName = "GetCallerInfo";
  procedure_.Outermost(kName, [&] {
    std::array<std::uint8_t, kBufferSize> call_info{};
    ports::WriteDword(call_info, ports::kTotalSize, static_cast<std::uint32_t>(call_info.size()));
    const std::int32_t result = functions_.GetCallInfo(static_cast<std::uint32_t>(call), call_info);
    if (result != 0) return errors_.ProcessTAPIError(result);
    call_.IsExternal = ports::ReadDword(call_info, kOrigin) != kOriginInternal;
    call_.IsTransfered = (ports::ReadDword(call_info, kReason) & kReasonTransfer) != 0;
    connected ? ReadConnectedParty(call_info) : ReadOfferedCaller(call_info);
    const std::string text = "Caller ID = " + call_.CurrentCallerId;
    procedure_.Trace(kName, text);
    procedure_.Log(kName, text);
  });
}

void TAPIFunctionsModule::ReadOfferedCaller(std::span<const std::uint8_t> call_info) {
  if ((ports::ReadDword(call_info, kCallerIdFlags) & kPartyAddress) == 0) {
    receiver_.ShowBaloonToolTip(texts_.GetLocalizedString("279"), " ");
    return ForgetCaller();
  }
  call_.CurrentCallerId = ExtractNumber(call_info, ports::ReadDword(call_info, kCallerIdOffset),
                                        ports::ReadDword(call_info, kCallerIdSize));
  if (!call_.IsExternal) return AnnounceInternalCall();
  receiver_.ShowBaloonToolTip(texts_.GetLocalizedString("279"), call_.CurrentCallerId + " ");
  call_.CallerFound = contacts_.CheckCallerIdInCRMDatabase(call_.CurrentCallerId, call_.CallerContact);
}

void TAPIFunctionsModule::ReadConnectedParty(std::span<const std::uint8_t> call_info) {
  if ((ports::ReadDword(call_info, kConnectedIdFlags) & kPartyAddress) == 0) return ForgetCaller();
  call_.CurrentCallerId = ExtractNumber(call_info, ports::ReadDword(call_info, kConnectedIdOffset),
                                        ports::ReadDword(call_info, kConnectedIdSize));
  call_.CallerFound = contacts_.CheckCallerIdInCRMDatabase(call_.CurrentCallerId, call_.CallerContact);
}

void TAPIFunctionsModule::ForgetCaller() {
  call_.CurrentCallerId = kUnknownCaller;
  call_.CallerFound = false;
}

void TAPIFunctionsModule::AnnounceInternalCall() {
  const std::string name = receiver_.GetInternalCallerName(GetCurrentCallerID());
  const std::string text = name.empty() ? GetCurrentCallerID() + " " : name;
  if (call_.IsTransfered) {
    receiver_.ShowBaloonToolTip(texts_.GetLocalizedString("281"), text);
  } else if (receiver_.DoSupportTrayBaloon()) {
    receiver_.ShowBaloonToolTip(texts_.GetLocalizedString("280"), text);
  } else {
    receiver_.ShowInternallCalDialog(name.empty() ? GetCurrentCallerID() : name);
  }
}

/// Takes one byte more than `size`; the terminating zero normally ends the text
/// first. An index outside the variable area raises 9.
std::string TAPIFunctionsModule::ExtractNumber(std::span<const std::uint8_t> call_info, std::uint32_t offset,
                                               std::uint32_t size) const {
  const auto area = call_info.subspan(kFixedSize);
  if (offset < kFixedSize) base::RaiseSubscriptOutOfRange();
  const std::uint64_t start = offset - kFixedSize;
  std::string number;
  for (std::uint64_t i = 0; i <= size; ++i) {
    if (start + i >= area.size()) base::RaiseSubscriptOutOfRange();
    const std::uint8_t byte = area[static_cast<std::size_t>(start + i)];
    if (byte == 0) break;
    number.push_back(static_cast<char>(byte));
  }
  return code_page_.ToText(number);
}

/// No mask on purpose: a value with bit 15 clear and something in its upper half overflows.
std::int16_t TAPIFunctionsModule::LoWord(std::int32_t value) const {
  return procedure_("LoWord", [&] {
    if ((value & 0x8000) != 0)
      return static_cast<std::int16_t>(static_cast<std::uint32_t>(value) | 0xFFFF0000U);
    if (value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max()) {
      base::RaiseOverflow();
    }
    return static_cast<std::int16_t>(value);
  });
}

}  // namespace kestro::telephony
