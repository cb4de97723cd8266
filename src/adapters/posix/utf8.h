#pragma once

#include <functional>
#include <string_view>

namespace kestro::adapters {

/// Calls `visit` with each character and the bytes it is made of; a byte that is
/// not UTF-8 comes alone, as kMalformedByte.
inline constexpr char32_t kMalformedByte = 0xFFFFFFFF;
void ForEachCharacter(std::string_view text,
                      const std::function<void(char32_t character, std::string_view bytes)>& visit);

/// Control characters, line separators and the byte order mark: what an editor
/// does not show or takes for a line end.
[[nodiscard]] bool IsControlCharacter(char32_t character);
[[nodiscard]] bool HasControlCharacter(std::string_view text);

}  // namespace kestro::adapters
