#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestro::base {

/// Text inside the system is UTF-8. Every count below is a count of characters
/// (Unicode code points), never of bytes; a malformed byte counts as one character.

/// Removes leading and trailing spaces (U+0020 only; tabs and line breaks stay).
[[nodiscard]] std::string_view Trim(std::string_view text);

/// The first `count` characters.
[[nodiscard]] std::string_view FirstCharacters(std::string_view text, std::size_t count);

[[nodiscard]] std::size_t CharacterCount(std::string_view text);

/// Replaces every occurrence of `what` (not empty) by `with`, in one pass from the left.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);

/// Whether the text is UTF-8 all through: no malformed byte.
[[nodiscard]] bool IsUtf8(std::string_view text);

/// Takes the character at `position` and moves `position` behind it. A malformed
/// byte yields U+FFFD and moves by one byte. `position` must be inside the text.
[[nodiscard]] char32_t NextCharacter(std::string_view text, std::size_t& position);

void AppendCharacter(std::string& text, char32_t character);

/// Upper case of all letters that have one (simple mapping, language-independent).
[[nodiscard]] std::string UpperCase(std::string_view text);

/// The form in which two texts that differ only in letter case are equal.
[[nodiscard]] std::string FoldCase(std::string_view text);

[[nodiscard]] bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// Whole text as a signed 32-bit number: optional sign, decimal digits, spaces
/// around them. Nothing when it is anything else or out of range.
[[nodiscard]] std::optional<std::int32_t> ParseInt32(std::string_view text);

/// Like ParseInt32 but raises type mismatch (13) or overflow (6).
[[nodiscard]] std::int32_t ToInt32(std::string_view text);

/// `value` unless its text trimmed of spaces is empty; then `fallback`.
[[nodiscard]] std::string_view OrDefault(std::string_view value, std::string_view fallback);

/// "0x" and eight (or `digits`) lower-case hexadecimal digits.
[[nodiscard]] std::string Hex(std::uint32_t value, int digits = 8);

}  // namespace kestro::base
