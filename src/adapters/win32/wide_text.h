#pragma once

#include <string>
#include <string_view>

namespace kestro::adapters {

/// Between the system's own text and ours. What is malformed becomes U+FFFD; nothing is raised.
[[nodiscard]] std::wstring ToWide(std::string_view utf8);
[[nodiscard]] std::string ToUtf8(std::wstring_view wide);

}  // namespace kestro::adapters
