#include "jet/stored_text.h"

#include <cstring>
#include <optional>

#include "jet/error.h"
#include "jet/utf.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kShortestCompressed = 3;    // characters
constexpr std::size_t kLongestCompressed = 1024;  // characters

bool IsSurrogate(std::uint32_t unit, std::uint32_t first) { return unit >= first && unit < first + 0x400; }

const char* Characters(ByteSpan stored) { return reinterpret_cast<const char*>(stored.data()); }

// Appends units as long as they are ASCII, four at a time; returns where it ended.
std::size_t AppendAsciiUnits(ByteSpan stored, std::size_t at, std::string& text) {
  constexpr std::uint64_t kBeyondAscii = 0xFF80FF80FF80FF80;
  for (; at + 8 <= stored.size(); at += 8) {
    const std::uint64_t units = Load64(stored, at);
    if ((units & kBeyondAscii) != 0) break;
    const char four[] = {static_cast<char>(units), static_cast<char>(units >> 16),
                         static_cast<char>(units >> 32), static_cast<char>(units >> 48)};
    text.append(four, sizeof four);
  }
  return at;
}

// Units from `stored`; an odd last byte is ignored.
void AppendUtf16(ByteSpan stored, std::string& text) {
  const std::size_t end = stored.size() & ~std::size_t{1};
  for (std::size_t at = AppendAsciiUnits(stored, 0, text); at < end; at += 2) {
    const std::uint32_t unit = stored[at] | (static_cast<std::uint32_t>(stored[at + 1]) << 8);
    if (unit < 0x80) {
      text.push_back(static_cast<char>(unit));
    } else if (IsSurrogate(unit, 0xD800) && at + 2 < end && IsSurrogate(Load16(stored, at + 2), 0xDC00)) {
      at += 2;
      AppendUtf8(text, 0x10000 + ((unit & 0x3FF) << 10) + (Load16(stored, at) & 0x3FFU));
    } else {
      AppendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit);
    }
  }
}

bool IsShort(ByteSpan stored) { return stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE; }

// Where the bytes from `at` on stop being ASCII without zeros.
std::size_t PlainEnd(ByteSpan stored, std::size_t at) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  for (; at + 8 <= stored.size(); at += 8) {
    const std::uint64_t bytes = Load64(stored, at);
    // The difference sets the high bit of the lowest zero byte.
    if (((bytes | (bytes - kOnes)) & kHighBits) != 0) break;
  }
  while (at < stored.size() && stored[at] != 0 && stored[at] < 0x80) ++at;
  return at;
}

// A byte 0 changes between one byte and two bytes a character.
void AppendCompressed(ByteSpan stored, std::string& text) {
  std::size_t at = 0;
  while (at < stored.size()) {
    while (at < stored.size() && stored[at] != 0) {
      const std::size_t end = PlainEnd(stored, at);
      text.append(Characters(stored) + at, end - at);
      at = end;
      if (at < stored.size() && stored[at] >= 0x80) AppendUtf8(text, stored[at++]);
    }
    const std::size_t start = ++at;
    while (at + 1 < stored.size() && stored[at] != 0) at += 2;
    if (start < stored.size()) AppendUtf16(stored.subspan(start, at - start), text);
    ++at;
  }
}

// Writes Latin-1 text with a byte a character; returns its length, or nothing when the text is another one.
std::optional<std::size_t> WriteLatin1(std::string_view text, MutableBytes stored) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    auto byte = static_cast<std::uint8_t>(text[at]);
    if (byte == 0) return std::nullopt;
    if (byte >= 0x80) {
      // U+0080 to U+00FF are the two-byte characters that begin with C2 and C3.
      const std::uint8_t next = ++at < text.size() ? static_cast<std::uint8_t>(text[at]) : 0;
      if ((byte & 0xFE) != 0xC2 || (next & 0xC0) != 0x80) return std::nullopt;
      byte = static_cast<std::uint8_t>((byte << 6) | (next & 0x3F));
    }
    stored[count++] = byte;
  }
  return count;
}

// The short form, if the text has one; returns the number of characters.
std::optional<std::size_t> AppendShort(std::string_view text, std::vector<std::uint8_t>& stored) {
  if (text.size() < kShortestCompressed || text.size() > 2 * kLongestCompressed) return std::nullopt;
  const std::size_t start = stored.size();
  stored.resize(start + 2 + text.size());
  stored[start] = 0xFF;
  stored[start + 1] = 0xFE;
  const auto count = WriteLatin1(text, MutableBytes(stored).subspan(start + 2));
  const bool suits = count && *count >= kShortestCompressed && *count <= kLongestCompressed;
  stored.resize(suits ? start + 2 + *count : start);
  return suits ? count : std::nullopt;
}

}  // namespace

StoredText LookAtStoredText(ByteSpan stored) {
  if (!IsShort(stored)) return {StoredText::Form::kUtf16, stored};
  const ByteSpan characters = stored.subspan(2);
  const bool mixed = !characters.empty() && std::memchr(characters.data(), 0, characters.size()) != nullptr;
  return {mixed ? StoredText::Form::kMixed : StoredText::Form::kLatin1, characters};
}

void AppendStoredText(ByteSpan stored, std::string& text) {
  if (IsShort(stored)) {
    AppendCompressed(stored.subspan(2), text);
  } else {
    AppendUtf16(stored, text);
  }
}

std::string DecodeUtf16(ByteSpan stored) {
  std::string text;
  AppendUtf16(stored, text);
  return text;
}

std::size_t AppendTextBytes(std::string_view text, TextForm form, std::vector<std::uint8_t>& stored) {
  if (form == TextForm::kShortestAllowed) {
    if (const std::optional<std::size_t> characters = AppendShort(text, stored)) return *characters;
  }
  std::size_t units = 0;
  const auto append = [&](char32_t unit) {
    stored.push_back(static_cast<std::uint8_t>(unit));
    stored.push_back(static_cast<std::uint8_t>(unit >> 8));
    ++units;
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::optional<char32_t> character = NextUtf8(text, at);
    if (!character) throw Error(ErrorKind::kValue, "The text is no valid UTF-8");
    if (*character == 0xFEFF && units == 0) throw Error(ErrorKind::kValue, "The text starts with U+FEFF");
    if (*character >= 0x10000) {
      append(0xD800 + ((*character - 0x10000) >> 10));
      append(0xDC00 + (*character & 0x3FF));
    } else {
      append(*character);
    }
  }
  return units;
}

}  // namespace kestro::jet
