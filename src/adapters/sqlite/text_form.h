#pragma once

#include <cstddef>
#include <string_view>

#include "base/text.h"

namespace kestro::adapters {

/// The forms in which TextMatcher reads texts, each as bytes. kUnit is the size of what an ASCII character
/// takes; Take decodes the character at `position`, which must be inside, and moves behind it.

[[nodiscard]] inline unsigned ByteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

/// A character outside ASCII that folds to one inside, in UTF-8 and in UTF-16LE.
struct OtherSpelling {
  char letter;
  std::string_view utf8;
  std::string_view utf16;
};

struct Utf8Form {
  static constexpr std::size_t kUnit = 1;
  /// Malformed bytes get values from here on, above all characters: each one is found as itself only.
  static constexpr char32_t kMalformedByte = 0x110000;

  static std::string_view Spelling(const OtherSpelling& other) { return other.utf8; }
  static char32_t Take(std::string_view text, std::size_t& position) {
    const std::size_t start = position;
    const unsigned lead = ByteAt(text, start);
    if (lead < 0x80U) {
      ++position;
      return lead;
    }
    if (lead >= 0xC2U && lead < 0xE0U && start + 1 < text.size() && (ByteAt(text, start + 1) >> 6U) == 2U) {
      position += 2;  // most accented letters: decoded here, without a call
      return ((lead & 0x1FU) << 6U) | (ByteAt(text, start + 1) & 0x3FU);
    }
    const char32_t character = base::NextCharacter(text, position);
    return character == U'\uFFFD' && position == start + 1 ? kMalformedByte + lead : character;
  }
};

/// A byte a character.
struct Latin1Form {
  static constexpr std::size_t kUnit = 1;

  static std::string_view Spelling(const OtherSpelling& /*other*/) { return {}; }
  static char32_t Take(std::string_view text, std::size_t& position) { return ByteAt(text, position++); }
};

/// UTF-16LE of an even size; halves of a surrogate pair that stand alone are U+FFFD.
struct Utf16Form {
  static constexpr std::size_t kUnit = 2;

  static std::string_view Spelling(const OtherSpelling& other) { return other.utf16; }
  static char32_t Take(std::string_view text, std::size_t& position) {
    const unsigned unit = Unit(text, position);
    position += kUnit;
    if ((unit & 0xF800U) != 0xD800U) return unit;
    const unsigned next = position < text.size() ? Unit(text, position) : 0;
    if ((unit & 0x400U) != 0 || (next & 0xFC00U) != 0xDC00U) return U'\uFFFD';
    position += kUnit;
    return 0x10000U + ((unit & 0x3FFU) << 10U) + (next & 0x3FFU);
  }

 private:
  static unsigned Unit(std::string_view text, std::size_t position) {
    return ByteAt(text, position) | (ByteAt(text, position + 1) << 8U);
  }
};

}  // namespace kestro::adapters
