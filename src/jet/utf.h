#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestro::jet {

/// The next character of UTF-8 text, `at` moves behind it; nothing when the bytes are no UTF-8.
std::optional<char32_t> NextUtf8(std::string_view text, std::size_t& at);

void AppendUtf8(std::string& text, char32_t character);

}  // namespace kestro::jet
