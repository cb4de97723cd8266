#include "jet/utf.h"

namespace kestro::jet {

std::optional<char32_t> NextUtf8(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t first = byte(at);
  if (first < 0x80) {
    ++at;
    return first;
  }
  const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4 || text.size() - at <= more) return std::nullopt;
  auto character = static_cast<char32_t>(first & (0x3F >> more));
  for (std::size_t i = 1; i <= more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return std::nullopt;
    character = (character << 6) | (byte(at + i) & 0x3FU);
  }
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < kLeast[more] || character > 0x10FFFF || surrogate) return std::nullopt;
  at += more + 1;
  return character;
}

void AppendUtf8(std::string& text, char32_t character) {
  if (character < 0x80) {
    text.push_back(static_cast<char>(character));
    return;
  }
  const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  constexpr char32_t kMark[] = {0, 0xC0, 0xE0, 0xF0};
  text.push_back(static_cast<char>(kMark[more] | (character >> (6 * more))));
  for (int i = more - 1; i >= 0; --i) {
    text.push_back(static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3F)));
  }
}

}  // namespace kestro::jet
