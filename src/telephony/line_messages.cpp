#include "telephony/line_messages.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestro::telephony {
namespace {

struct NamedValue {
  std::uint32_t value;
  std::string_view name;
};

/// By message number. The two that log a value of their own have no name here.
constexpr auto kMessages = std::to_array<std::string_view>({"LINE_ADDRESSSTATE",
                                                            "LINE_CALLINFO",
                                                            "LINE_CALLSTATE",
                                                            "LINE_CLOSE",
                                                            "LINE_DEVSPECIFIC",
                                                            "LINE_DEVSPECIFICFEATURE",
                                                            "LINE_GATHERDIGITS",
                                                            "LINE_GENERATE",
                                                            "LINE_LINEDEVSTATE",
                                                            "",
                                                            "LINE_MONITORMEDIA",
                                                            "LINE_MONITORTONE",
                                                            "",
                                                            "LINE_REQUEST",
                                                            "PHONE_BUTTON",
                                                            "PHONE_CLOSE",
                                                            "PHONE_DEVSPECIFIC",
                                                            "PHONE_REPLY",
                                                            "PHONE_STATE",
                                                            "LINE_CREATE",
                                                            "PHONE_CREATE"});

/// The last value of the first table and BATTERY in the second are the
/// sign-extended 16-bit constants, not the line functions' 0x00008000: a real
/// 0x00008000 counts as an unnamed state. Kept on purpose.
constexpr std::array kCallStates = {
    NamedValue{0x00000001, "LINECALLSTATE_IDLE"},
    NamedValue{0x00000002, "LINECALLSTATE_OFFERING"},
    NamedValue{0x00000004, "LINECALLSTATE_ACCEPTED"},
    NamedValue{0x00000008, "LINECALLSTATE_DIALTONE"},
    NamedValue{0x00000010, "LINECALLSTATE_DIALING"},
    NamedValue{0x00000020, "LINECALLSTATE_RINGBACK"},
    NamedValue{0x00000040, "LINECALLSTATE_BUSY"},
    NamedValue{0x00000080, "LINECALLSTATE_SPECIALINFO"},
    NamedValue{0x00000100, "LINECALLSTATE_CONNECTED"},
    NamedValue{0x00000200, "LINECALLSTATE_PROCEEDING"},
    NamedValue{0x00000400, "LINECALLSTATE_ONHOLD"},
    NamedValue{0x00000800, "LINECALLSTATE_CONFERENCED"},
    NamedValue{0x00001000, "LINECALLSTATE_ONHOLDPENDCONF"},
    NamedValue{0x00002000, "LINECALLSTATE_ONHOLDPENDTRANSFER"},
    NamedValue{0x00004000, "LINECALLSTATE_DISCONNECTED"},
    NamedValue{0xFFFF8000, "LINECALLSTATE_UNKNOWN"},
};

constexpr std::array kDeviceStates = {
    NamedValue{0x00000001, "LINEDEVSTATE_OTHER"},
    NamedValue{0x00000002, "LINEDEVSTATE_RINGING"},
    NamedValue{0x00000004, "LINEDEVSTATE_CONNECTED"},
    NamedValue{0x00000008, "LINEDEVSTATE_DISCONNECTED"},
    NamedValue{0x00000010, "LINEDEVSTATE_MSGWAITON"},
    NamedValue{0x00000020, "LINEDEVSTATE_MSGWAITOFF"},
    NamedValue{0x00000040, "LINEDEVSTATE_INSERVICE"},
    NamedValue{0x00000080, "LINEDEVSTATE_OUTOFSERVICE"},
    NamedValue{0x00000100, "LINEDEVSTATE_MAINTENANCE"},
    NamedValue{0x00000200, "LINEDEVSTATE_OPEN"},
    NamedValue{0x00000400, "LINEDEVSTATE_CLOSE"},
    NamedValue{0x00000800, "LINEDEVSTATE_NUMCALLS"},
    NamedValue{0x00001000, "LINEDEVSTATE_NUMCOMPLETIONS"},
    NamedValue{0x00002000, "LINEDEVSTATE_TERMINALS"},
    NamedValue{0x00004000, "LINEDEVSTATE_ROAMMODE"},
    NamedValue{0xFFFF8000, "LINEDEVSTATE_BATTERY"},
    NamedValue{0x00010000, "LINEDEVSTATE_SIGNAL"},
    NamedValue{0x00020000, "LINEDEVSTATE_DEVSPECIFIC"},
    NamedValue{0x00040000, "LINEDEVSTATE_REINIT"},
    NamedValue{0x00080000, "LINEDEVSTATE_LOCK"},
    NamedValue{0x00100000, "LINEDEVSTATE_CAPSCHANGE"},
    NamedValue{0x00200000, "LINEDEVSTATE_CONFIGCHANGE"},
    NamedValue{0x00400000, "LINEDEVSTATE_TRANSLATECHANGE"},
    NamedValue{0x00800000, "LINEDEVSTATE_COMPLCANCEL"},
    NamedValue{0x01000000, "LINEDEVSTATE_REMOVED"},
};

std::string_view NameIn(std::span<const NamedValue> table, std::uint32_t value) {
  const auto found = std::find_if(table.begin(), table.end(),
                                  [value](const NamedValue& entry) { return entry.value == value; });
  return found == table.end() ? std::string_view() : found->name;
}

}  // namespace

std::string_view LineMessageName(std::int32_t message) {
  const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(message));
  return index < kMessages.size() ? kMessages.at(index) : std::string_view();
}

std::string_view CallStateName(std::uint32_t state) { return NameIn(kCallStates, state); }

std::string_view LineDeviceStateName(std::uint32_t state) { return NameIn(kDeviceStates, state); }

}  // namespace kestro::telephony
