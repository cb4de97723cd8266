#include "adapters/win32/tapi_library.h"

namespace kestro::adapters {

TapiLibrary::TapiLibrary(const std::wstring& name)
    // Never from the current folder, which may be anybody's.
    : module_(::LoadLibraryExW(name.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS)) {
  if (!module_) return;
  Find("lineInitialize", lineInitialize);
  Find("lineNegotiateAPIVersion", lineNegotiateAPIVersion);
  Find("lineGetDevCaps", lineGetDevCaps);
  Find("lineOpen", lineOpen);
  Find("lineSetStatusMessages", lineSetStatusMessages);
  Find("lineGetCallInfo", lineGetCallInfo);
  Find("lineDrop", lineDrop);
  Find("lineDeallocateCall", lineDeallocateCall);
  Find("lineTranslateAddress", lineTranslateAddress);
  Find("lineBlindTransfer", lineBlindTransfer);
  Find("lineClose", lineClose);
  Find("lineShutdown", lineShutdown);
}

}  // namespace kestro::adapters
