#include "jet/stored_text.h"

#include <optional>

#include "jet/error.h"
#include "jet/utf.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kShortestCompressed = 3;    // characters
constexpr std::size_t kLongestCompressed = 1024;  // characters

bool IsSurrogate(std::uint32_t unit, std::uint32_t first) { return unit >= first && unit < first + 0x400; }

// Units from `stored`; an odd last byte is ignored.
void AppendUtf16(ByteSpan stored, std::string& text) {
  const std::size_t end = stored.size() & ~std::size_t{1};
  for (std::size_t at = 0; at < end; at += 2) {
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

// A byte 0 changes between one byte and two bytes a character.
void AppendCompressed(ByteSpan stored, std::string& text) {
  std::size_t at = 0;
  while (at < stored.size()) {
    while (at < stored.size() && stored[at] != 0) {
      const std::size_t run = at;
      while (at < stored.size() && stored[at] != 0 && stored[at] < 0x80) ++at;
      text.append(stored.begin() + static_cast<std::ptrdiff_t>(run),
                  stored.begin() + static_cast<std::ptrdiff_t>(at));
      if (at < stored.size() && stored[at] >= 0x80) AppendUtf8(text, stored[at++]);
    }
    const std::size_t start = ++at;
    while (at + 1 < stored.size() && stored[at] != 0) at += 2;
    if (start < stored.size()) AppendUtf16(stored.subspan(start, at - start), text);
    ++at;
  }
}

bool IsCompressible(std::string_view text) {
  std::size_t characters = 0;
  for (std::size_t at = 0; at < text.size(); ++characters) {
    const std::optional<char32_t> character = NextUtf8(text, at);
    if (!character || *character == 0 || *character > 0xFF) return false;
  }
  return characters >= kShortestCompressed && characters <= kLongestCompressed;
}

// No zero and nothing above 0x7F: the bytes are the stored form already.
bool IsPlainAscii(std::string_view text) {
  bool plain = true;
  for (const char c : text) plain &= static_cast<signed char>(c) > 0;
  return plain;
}

}  // namespace

void AppendStoredText(ByteSpan stored, std::string& text) {
  if (stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE) {
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
  if (form == TextForm::kShortestAllowed && text.size() >= kShortestCompressed &&
      text.size() <= kLongestCompressed && IsPlainAscii(text)) {
    stored.insert(stored.end(), {0xFF, 0xFE});
    stored.insert(stored.end(), text.begin(), text.end());
    return text.size();
  }
  const bool compress = form == TextForm::kShortestAllowed && IsCompressible(text);
  if (compress) stored.insert(stored.end(), {0xFF, 0xFE});
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::optional<char32_t> character = NextUtf8(text, at);
    if (!character) throw Error(ErrorKind::kValue, "The text is no valid UTF-8");
    if (*character == 0xFEFF && units == 0) throw Error(ErrorKind::kValue, "The text starts with U+FEFF");
    const auto append = [&](char32_t unit) {
      stored.push_back(static_cast<std::uint8_t>(unit));
      if (!compress) stored.push_back(static_cast<std::uint8_t>(unit >> 8));
      ++units;
    };
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
