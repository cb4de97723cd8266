#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <span>

#include "base/runtime_error.h"
#include "generated/case_tables.h"

namespace kestro::base {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

struct SequenceStart {
  std::size_t length;
  char32_t bits;
  char32_t smallest;  // shorter encodings of the same character are malformed
};

std::optional<SequenceStart> StartOfSequence(unsigned char lead) {
  if (lead < 0x80U) return SequenceStart{1, lead, 0};
  if (lead >= 0xC2U && lead < 0xE0U) return SequenceStart{2, lead & 0x1FU, 0x80};
  if (lead >= 0xE0U && lead < 0xF0U) return SequenceStart{3, lead & 0x0FU, 0x800};
  if (lead >= 0xF0U && lead < 0xF5U) return SequenceStart{4, lead & 0x07U, 0x10000};
  return std::nullopt;
}

/// Length of the character at the start of `text` (not empty) and its value.
std::pair<std::size_t, char32_t> Decode(std::string_view text) {
  const auto start = StartOfSequence(static_cast<unsigned char>(text.front()));
  if (!start || start->length > text.size()) return {1, kReplacementCharacter};
  char32_t character = start->bits;
  for (std::size_t i = 1; i < start->length; ++i) {
    if (!IsContinuation(text[i])) return {1, kReplacementCharacter};
    character = (character << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < start->smallest || surrogate || character > 0x10FFFF) return {1, kReplacementCharacter};
  return {start->length, character};
}

/// How many of the first bytes are ASCII, counted in whole words: a few more may follow.
std::size_t AsciiWords(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080'8080'8080'8080U;
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  return length;
}

char32_t Mapped(std::span<const CasePair> pairs, char32_t character) {
  const auto found = std::lower_bound(pairs.begin(), pairs.end(), character,
                                      [](const CasePair& pair, char32_t value) { return pair.from < value; });
  return found != pairs.end() && found->from == character ? found->to : character;
}

std::string MapCharacters(std::string_view text, std::span<const CasePair> pairs) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const auto [length, character] = Decode(text.substr(position));
    const char32_t mapped = Mapped(pairs, character);
    if (mapped == character) {
      result.append(text.substr(position, length));  // malformed bytes stay as they are
    } else {
      AppendCharacter(result, mapped);
    }
    position += length;
  }
  return result;
}

enum class NumberFault { kNone, kNotANumber, kTooLarge };

NumberFault ReadInt32(std::string_view text, std::int32_t& value) {
  text = Trim(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error == std::errc::invalid_argument || stop != end) return NumberFault::kNotANumber;
  return error == std::errc::result_out_of_range ? NumberFault::kTooLarge : NumberFault::kNone;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  while (count-- > 0 && end < text.size()) end += Decode(text.substr(end)).first;
  return text.substr(0, end);
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t end = 0; end < text.size(); ++count) end += Decode(text.substr(end)).first;
  return count;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  while (true) {
    const auto found = text.find(what);
    result.append(text.substr(0, found));
    if (found == std::string_view::npos) return result;
    result.append(with);
    text.remove_prefix(found + what.size());
  }
}

bool IsUtf8(std::string_view text) {
  while (true) {
    text.remove_prefix(AsciiWords(text));
    if (text.empty()) return true;
    const auto [length, character] = Decode(text);
    if (length == 1 && character == kReplacementCharacter) return false;
    text.remove_prefix(length);
  }
}

char32_t NextCharacter(std::string_view text, std::size_t& position) {
  const auto [length, character] = Decode(text.substr(position));
  position += length;
  return character;
}

void AppendCharacter(std::string& text, char32_t character) {
  const auto byte = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
  if (character < 0x80) {
    byte(character);
  } else if (character < 0x800) {
    byte(0xC0 | (character >> 6U));
    byte(0x80 | (character & 0x3FU));
  } else if (character < 0x10000) {
    byte(0xE0 | (character >> 12U));
    byte(0x80 | ((character >> 6U) & 0x3FU));
    byte(0x80 | (character & 0x3FU));
  } else {
    byte(0xF0 | (character >> 18U));
    byte(0x80 | ((character >> 12U) & 0x3FU));
    byte(0x80 | ((character >> 6U) & 0x3FU));
    byte(0x80 | (character & 0x3FU));
  }
}

std::string UpperCase(std::string_view text) { return MapCharacters(text, UpperCasePairs()); }

std::string FoldCase(std::string_view text) { return MapCharacters(text, CaseFoldPairs()); }

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return FoldCase(left) == FoldCase(right);
}

std::optional<std::int32_t> ParseInt32(std::string_view text) {
  std::int32_t value = 0;
  if (ReadInt32(text, value) != NumberFault::kNone) return std::nullopt;
  return value;
}

std::int32_t ToInt32(std::string_view text) {
  std::int32_t value = 0;
  switch (ReadInt32(text, value)) {
    case NumberFault::kNone:
      return value;
    case NumberFault::kNotANumber:
      RaiseTypeMismatch();
    case NumberFault::kTooLarge:
      RaiseOverflow();
  }
  return value;
}

std::string_view OrDefault(std::string_view value, std::string_view fallback) {
  return Trim(value).empty() ? fallback : value;
}

std::string Hex(std::uint32_t value, int digits) {
  std::array<char, 8> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, 16).ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const auto width = static_cast<std::size_t>(std::max(digits, static_cast<int>(text.size())));
  return "0x" + std::string(width - text.size(), '0').append(text);
}

}  // namespace kestro::base
