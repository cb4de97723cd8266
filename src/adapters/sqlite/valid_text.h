#pragma once

#include <string>
#include <string_view>

namespace kestro::adapters {

/// The text with U+FFFD for each malformed byte. UTF-8 that is well formed comes back as it is.
[[nodiscard]] std::string ValidText(std::string_view text);

}  // namespace kestro::adapters
