#include "reception/internal_lines.h"

#include "base/text.h"

namespace kestro::reception::Functions {

std::string InternalLines::GetInternalListCallerId(std::string_view caption) const {
  return procedure_("GetInternalListCallerId", [&]() -> std::string {
    const auto blank = caption.find(' ');
    if (blank == std::string_view::npos || blank == 0) return {};
    return std::string(base::Trim(caption.substr(0, blank)));
  });
}

std::string InternalLines::GetInternalListCallerName(std::string_view caption) const {
  return procedure_("GetInternalListCallerName", [&]() -> std::string {
    const auto dash = caption.find('-');
    if (dash == std::string_view::npos || dash == 0) return {};
    return std::string(base::Trim(caption.substr(dash + 1)));
  });
}

std::string InternalLines::GetInternalCallerName(std::string_view caller_id) const {
  return procedure_("GetInternalCallerName", [&] {
    std::string name;
    if (base::Trim(caller_id).empty()) return name;
    for (int index = 0; index < tray_.mnuRedirectList.count(); ++index) {
      const std::string& caption = tray_.mnuRedirectList.at(index).caption();
      if (GetInternalListCallerId(caption) == caller_id) name = GetInternalListCallerName(caption);
    }
    return name;
  });
}

}  // namespace kestro::reception::Functions
