#include "core/dial_link.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kestro::core {
namespace {

constexpr std::size_t kMostBytes = 256;
constexpr std::array<std::string_view, 2> kSchemes = {"tel:", "callto:"};

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Of ASCII only, whatever the language.
char LowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Length of the scheme with its colon; 0 when it is another one.
std::size_t SchemeLength(std::string_view link) {
  for (const std::string_view scheme : kSchemes) {
    const std::string_view start = link.substr(0, scheme.size());
    if (std::equal(start.begin(), start.end(), scheme.begin(), scheme.end(),
                   [](char written, char wanted) { return LowerCase(written) == wanted; })) {
      return scheme.size();
    }
  }
  return 0;
}

std::optional<int> HexValue(char character) {
  if (IsDigit(character)) return character - '0';
  const char letter = LowerCase(character);
  return letter >= 'a' && letter <= 'f' ? std::optional(letter - 'a' + 10) : std::nullopt;
}

/// Takes the character in front of the text, decoded once; nothing for a percent sign without two digits.
std::optional<char> TakeCharacter(std::string_view& text) {
  const char first = text.front();
  text.remove_prefix(1);
  if (first != '%') return first;
  if (text.size() < 2) return std::nullopt;
  const auto high = HexValue(text[0]);
  const auto low = HexValue(text[1]);
  text.remove_prefix(2);
  if (!high || !low) return std::nullopt;
  return static_cast<char>(*high * 16 + *low);
}

/// Digits and a plus in front, without separators; nothing when there is anything else.
std::optional<std::string> DigitsOf(std::string_view text) {
  constexpr std::string_view kSeparators = " -.()/";
  std::string number;
  while (!text.empty()) {
    const auto character = TakeCharacter(text);
    if (!character) return std::nullopt;
    const bool kept = IsDigit(*character) || (*character == '+' && number.empty());
    if (kept) {
      number.push_back(*character);
    } else if (kSeparators.find(*character) == std::string_view::npos) {
      return std::nullopt;
    }
  }
  return number;
}

}  // namespace

bool IsDialLink(std::string_view text) { return SchemeLength(text) > 0; }

std::string NumberOfLink(std::string_view link) {
  const std::size_t scheme = SchemeLength(link);
  if (scheme == 0 || link.size() > kMostBytes) return {};
  link.remove_prefix(scheme);
  const auto is_written = [](char character) { return character > ' ' && character < '\x7f'; };
  if (!std::all_of(link.begin(), link.end(), is_written)) return {};
  const auto number = DigitsOf(link.substr(0, link.find(';')));
  return number && IsLinkNumber(*number) ? *number : std::string();
}

bool IsLinkNumber(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  return !text.empty() && text.size() <= kMostLinkDigits && std::all_of(text.begin(), text.end(), IsDigit);
}

}  // namespace kestro::core
