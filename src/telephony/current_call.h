#pragma once

#include <cstdint>
#include <string>

#include "contacts/contact.h"

namespace kestro::telephony {

/// The call being handled; there is only ever one. Owned and written by
/// TAPIFunctionsModule, read elsewhere through its accessors.
struct CurrentCall {
  std::uint32_t CurrentCallHandle = 0;  // 0 = none
  std::string CurrentCallerId;          // as the exchange reports it, or "UNKNOWN"
  contacts::FoundContacts CallerContact;
  bool CallerFound = false;
  bool IsExternal = false;     // did not come from inside the exchange
  bool IsTransfered = false;   // reached this line by a transfer
  bool SwitchPending = false;  // a switching request waits for its LINE_REPLY
  bool SwitchFailed = false;   // the last switching request failed: the next IDLE does not end the call here
};

}  // namespace kestro::telephony
