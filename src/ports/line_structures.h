#pragma once

#include <cstddef>
#include <cstdint>

#include "ports/byte_buffer.h"  // how the structures are read and written

namespace kestro::ports {

/// The line functions' variable-size structures as byte buffers: a fixed part of
/// little-endian double words, then a variable area that the fixed part points
/// into with pairs of size (bytes) and offset (from the start of the structure).
/// A text in the variable area carries one terminating zero, counted in its size.
/// All constants below are byte offsets unless they say otherwise.

/// The start of every variable-size structure.
inline constexpr std::size_t kTotalSize = 0;   // bytes of the buffer, set by the caller
inline constexpr std::size_t kNeededSize = 4;  // bytes that would hold everything
inline constexpr std::size_t kUsedSize = 8;    // bytes that hold something

/// LINECALLINFO. The dialling parameters lie at 64 to 79; a party's fields are
/// flags, size and offset of the number, size and offset of the name.
namespace line_call_info {
inline constexpr std::size_t kLine = 12;
inline constexpr std::size_t kLineDeviceId = 16;
inline constexpr std::size_t kAddressId = 20;
inline constexpr std::size_t kBearerMode = 24;
inline constexpr std::size_t kRate = 28;
inline constexpr std::size_t kMediaMode = 32;
inline constexpr std::size_t kAppSpecific = 36;
inline constexpr std::size_t kCallId = 40;
inline constexpr std::size_t kRelatedCallId = 44;
inline constexpr std::size_t kCallParamFlags = 48;
inline constexpr std::size_t kCallStates = 52;
inline constexpr std::size_t kMonitorDigitModes = 56;
inline constexpr std::size_t kMonitorMediaModes = 60;
inline constexpr std::size_t kDialParams = 64;
inline constexpr std::size_t kOrigin = 80;
inline constexpr std::size_t kReason = 84;
inline constexpr std::size_t kCompletionId = 88;
inline constexpr std::size_t kNumOwners = 92;
inline constexpr std::size_t kNumMonitors = 96;
inline constexpr std::size_t kCountryCode = 100;
inline constexpr std::size_t kTrunk = 104;
inline constexpr std::size_t kCallerIdFlags = 108;
inline constexpr std::size_t kCallerIdSize = 112;
inline constexpr std::size_t kCallerIdOffset = 116;
inline constexpr std::size_t kCallerIdNameSize = 120;
inline constexpr std::size_t kCallerIdNameOffset = 124;
inline constexpr std::size_t kCalledIdFlags = 128;
inline constexpr std::size_t kConnectedIdFlags = 148;
inline constexpr std::size_t kConnectedIdSize = 152;
inline constexpr std::size_t kConnectedIdOffset = 156;
inline constexpr std::size_t kConnectedIdNameSize = 160;
inline constexpr std::size_t kConnectedIdNameOffset = 164;
inline constexpr std::size_t kRedirectionIdFlags = 168;
inline constexpr std::size_t kRedirectingIdFlags = 188;
inline constexpr std::size_t kAppNameSize = 208;
inline constexpr std::size_t kAppNameOffset = 212;

inline constexpr std::size_t kFixedSize = 324;          // bytes
inline constexpr std::size_t kVariableAreaSize = 2001;  // bytes, as the application asks for them
inline constexpr std::size_t kBufferSize = kFixedSize + kVariableAreaSize;

inline constexpr std::uint32_t kOriginInternal = 0x2;  // LINECALLORIGIN_
inline constexpr std::uint32_t kOriginExternal = 0x4;
inline constexpr std::uint32_t kReasonDirect = 0x1;  // LINECALLREASON_
inline constexpr std::uint32_t kReasonTransfer = 0x100;
/// LINECALLPARTYID_: how much is known of a party.
inline constexpr std::uint32_t kPartyBlocked = 0x1;
inline constexpr std::uint32_t kPartyName = 0x4;
inline constexpr std::uint32_t kPartyAddress = 0x8;
inline constexpr std::uint32_t kPartyUnknown = 0x20;
}  // namespace line_call_info

/// LINEDEVCAPS. Between the string format (40) and the line states (128) lie 21
/// double words: address modes, number of addresses, bearer modes, highest rate,
/// media modes, tone and digit generation (3), tone, digit and media monitoring
/// (5), sizes of the media-control lists (4), capability flags, active calls,
/// answer mode, ring modes.
namespace line_dev_caps {
inline constexpr std::size_t kProviderInfoSize = 12;
inline constexpr std::size_t kProviderInfoOffset = 16;
inline constexpr std::size_t kSwitchInfoSize = 20;
inline constexpr std::size_t kSwitchInfoOffset = 24;
inline constexpr std::size_t kPermanentLineId = 28;
inline constexpr std::size_t kLineNameSize = 32;
inline constexpr std::size_t kLineNameOffset = 36;
inline constexpr std::size_t kStringFormat = 40;
inline constexpr std::size_t kAddressModes = 44;
inline constexpr std::size_t kNumAddresses = 48;
inline constexpr std::size_t kBearerModes = 52;
inline constexpr std::size_t kMaxRate = 56;
inline constexpr std::size_t kMediaModes = 60;
inline constexpr std::size_t kMaxNumActiveCalls = 116;
inline constexpr std::size_t kAnswerMode = 120;
inline constexpr std::size_t kRingModes = 124;
inline constexpr std::size_t kLineStates = 128;

inline constexpr std::size_t kFixedSize = 252;          // bytes
inline constexpr std::size_t kVariableAreaSize = 2001;  // bytes, as the application asks for them
inline constexpr std::size_t kBufferSize = kFixedSize + kVariableAreaSize;

inline constexpr std::uint32_t kStringFormatAscii = 0x1;     // STRINGFORMAT_: one byte a character
inline constexpr std::uint32_t kAddressModeAddressId = 0x1;  // LINEADDRESSMODE_
inline constexpr std::uint32_t kBearerModeVoice = 0x1;       // LINEBEARERMODE_
}  // namespace line_dev_caps

/// LINETRANSLATEOUTPUT.
namespace line_translate_output {
inline constexpr std::size_t kDialableStringSize = 12;
inline constexpr std::size_t kDialableStringOffset = 16;
inline constexpr std::size_t kDisplayableStringSize = 20;
inline constexpr std::size_t kDisplayableStringOffset = 24;
inline constexpr std::size_t kCurrentCountry = 28;
inline constexpr std::size_t kDestCountry = 32;
inline constexpr std::size_t kTranslateResults = 36;

inline constexpr std::size_t kFixedSize = 40;  // bytes
/// The buffer is three bytes longer than what the application tells the line functions about it.
inline constexpr std::size_t kBufferSize = 2044;
inline constexpr std::uint32_t kTotalSizeToldOf = 2041;
}  // namespace line_translate_output

/// The only API version spoken: 1.4.
inline constexpr std::uint32_t kLineApiVersion = 0x00010004;
inline constexpr std::uint32_t kMediaModeInteractiveVoice = 0x4;  // LINEMEDIAMODE_
inline constexpr std::uint32_t kPrivilegeMonitor = 0x2;           // LINECALLPRIVILEGE_
inline constexpr std::uint32_t kPrivilegeOwner = 0x4;

/// Message numbers (LINE_) that carry an action.
inline constexpr std::int32_t kLineCallInfo = 1;
inline constexpr std::int32_t kLineCallState = 2;
inline constexpr std::int32_t kLineDevState = 8;
inline constexpr std::int32_t kLineMonitorDigits = 9;
inline constexpr std::int32_t kLineReply = 12;
/// LINECALLINFOSTATE_CALLERID, first parameter of LINE_CALLINFO.
inline constexpr std::uint32_t kCallInfoStateCallerId = 0x8000;

/// Failure results (LINEERR_), in their signed form.
enum LineError : std::int32_t {
  kLineErrBadDeviceId = static_cast<std::int32_t>(0x80000002U),
  kLineErrIncompatibleApiVersion = static_cast<std::int32_t>(0x8000000CU),
  kLineErrInvalidAddress = static_cast<std::int32_t>(0x80000010U),
  kLineErrInvalidAppHandle = static_cast<std::int32_t>(0x80000014U),
  kLineErrInvalidCallHandle = static_cast<std::int32_t>(0x80000018U),
  kLineErrInvalidCallState = static_cast<std::int32_t>(0x8000001CU),
  kLineErrInvalidLineHandle = static_cast<std::int32_t>(0x8000002BU),
  kLineErrInvalidPointer = static_cast<std::int32_t>(0x80000035U),
  kLineErrOperationFailed = static_cast<std::int32_t>(0x80000048U),
  kLineErrStructureTooSmall = static_cast<std::int32_t>(0x8000004DU),
};

}  // namespace kestro::ports
