#include "jet/value_text.h"

#include <algorithm>

namespace kestro::jet {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
// Text order of the bytes: the first three groups are little-endian numbers.
constexpr std::array<std::uint8_t, 16> kGuidOrder{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

bool IsGuidDash(std::size_t byte) { return byte == 4 || byte == 6 || byte == 8 || byte == 10; }

}  // namespace

std::string GuidText(ByteSpan stored) {
  std::string text = "{";
  for (std::size_t i = 0; i < kGuidOrder.size(); ++i) {
    if (IsGuidDash(i)) text.push_back('-');
    const std::uint8_t byte = Load8(stored, kGuidOrder[i]);
    text.push_back(kDigits[byte >> 4]);
    text.push_back(kDigits[byte & 0x0F]);
  }
  text.push_back('}');
  return text;
}

std::optional<std::array<std::uint8_t, 16>> ParseGuid(std::string_view text) {
  constexpr std::size_t kLength = 38;
  if (text.size() != kLength || text.front() != '{' || text.back() != '}') return std::nullopt;
  std::array<std::uint8_t, 16> stored{};
  std::size_t at = 1;
  for (std::size_t i = 0; i < kGuidOrder.size(); ++i) {
    if (IsGuidDash(i) && text[at++] != '-') return std::nullopt;
    int byte = 0;
    for (int half = 0; half < 2; ++half, ++at) {
      const char character =
          text[at] >= 'a' && text[at] <= 'f' ? static_cast<char>(text[at] - 0x20) : text[at];
      const std::size_t digit = kDigits.find(character);
      if (digit == std::string_view::npos) return std::nullopt;
      byte = byte * 16 + static_cast<int>(digit);
    }
    stored[kGuidOrder[i]] = static_cast<std::uint8_t>(byte);
  }
  return stored;
}

std::string NumericText(ByteSpan stored, std::size_t scale) {
  std::array<std::uint32_t, 4> words{};  // the most significant first
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = Load32(stored, 1 + 4 * i);
  std::string digits;  // the last first
  const auto is_zero = [&] {
    return std::ranges::all_of(words, [](std::uint32_t word) { return word == 0; });
  };
  while (!is_zero() || digits.size() <= scale) {
    std::uint64_t rest = 0;
    for (std::uint32_t& word : words) {
      rest = (rest << 32) | word;
      word = static_cast<std::uint32_t>(rest / 10);
      rest %= 10;
    }
    digits.push_back(static_cast<char>('0' + rest));
    if (scale != 0 && digits.size() == scale) digits.push_back('.');
  }
  if (stored[0] != 0) digits.push_back('-');
  std::ranges::reverse(digits);
  return digits;
}

}  // namespace kestro::jet
