#include "adapters/sqlite/text_matcher.h"

#include <algorithm>

#include "base/text.h"

namespace kestro::adapters {
namespace {

/// Malformed bytes get values above all characters, so that each one is found as itself only.
constexpr char32_t kMalformedByte = 0x110000;
constexpr char32_t kReplacementCharacter = 0xFFFD;

bool IsContinuation(unsigned byte) { return (byte & 0xC0U) == 0x80U; }

unsigned Byte(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

/// The only characters outside ASCII that fold to one inside, and what they fold to.
struct OtherSpelling {
  char letter;
  std::string_view character;
};
constexpr OtherSpelling kOtherSpellings[] = {{'s', "\u017F"}, {'k', "\u212A"}};

/// A folded ASCII character and the bit in which its two letter cases differ.
struct CasedByte {
  unsigned char folded;
  unsigned char case_bit;

  explicit CasedByte(char character)
      : folded(static_cast<unsigned char>(character)),
        case_bit(character >= 'a' && character <= 'z' ? 'a' - 'A' : 0) {}
  /// Zero when `byte` is the character in one of its letter cases.
  [[nodiscard]] unsigned char Difference(char byte) const {
    return static_cast<unsigned char>((static_cast<unsigned char>(byte) | case_bit) ^ folded);
  }
};

constexpr std::size_t kBlock = 16;

/// True when `first` stands somewhere in the block and `second` `distance` bytes behind it. Not inlined:
/// as a loop of its own without a branch inside it becomes a few vector instructions.
[[gnu::noinline]] bool BlockHasPair(const char* block, CasedByte first, CasedByte second,
                                    std::size_t distance) {
  unsigned char least = 0xFF;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const auto difference = first.Difference(block[i]) | second.Difference(block[i + distance]);
    least = std::min(least, static_cast<unsigned char>(difference));
  }
  return least == 0;
}

/// The next position from `position` on where the text has that pair.
std::size_t NextPair(std::string_view text, std::size_t position, CasedByte first, CasedByte second,
                     std::size_t distance) {
  while (position + kBlock + distance <= text.size() &&
         !BlockHasPair(text.data() + position, first, second, distance)) {
    position += kBlock;
  }
  for (; position + distance < text.size(); ++position) {
    if ((first.Difference(text[position]) | second.Difference(text[position + distance])) == 0)
      return position;
  }
  return std::string_view::npos;
}

}  // namespace

TextMatcher::TextMatcher(std::string_view part) : folding_(LetterFoldingTable()) {
  for (std::size_t position = 0; position < part.size();) part_.push_back(TakeFolded(part, position));
  for (const char32_t character : part_) {
    if (character >= 0x80) break;
    ascii_start_.push_back(static_cast<char>(character));
  }
}

char32_t TextMatcher::TakeFolded(std::string_view text, std::size_t& position) const {
  const std::size_t start = position;
  const unsigned lead = Byte(text, start);
  if (lead < 0x80U) {
    ++position;
    return lead - 'A' < 26U ? lead + ('a' - 'A') : lead;
  }
  if (lead >= 0xC2U && lead < 0xE0U && start + 1 < text.size() && IsContinuation(Byte(text, start + 1))) {
    position += 2;  // most accented letters: decoded here, without a call
    return folding_.Fold(((lead & 0x1FU) << 6U) | (Byte(text, start + 1) & 0x3FU));
  }
  const char32_t character = base::NextCharacter(text, position);
  const bool malformed = character == kReplacementCharacter && position == start + 1;
  return malformed ? kMalformedByte + lead : folding_.Fold(character);
}

bool TextMatcher::FoundIn(std::string_view text) const {
  if (part_.empty()) return true;
  if (ascii_start_.empty()) return FoundByCharacters(text);
  if (FoundByBytes(text)) return true;
  const auto in_text = [&](const OtherSpelling& other) {
    return ascii_start_.find(other.letter) != std::string::npos &&
           text.find(other.character) != std::string_view::npos;
  };
  return std::ranges::any_of(kOtherSpellings, in_text) && FoundByCharacters(text);
}

bool TextMatcher::FoundByBytes(std::string_view text) const {
  const std::size_t distance = ascii_start_.size() > 1 ? 1 : 0;
  const CasedByte first(ascii_start_[0]);
  const CasedByte second(ascii_start_[distance]);
  std::size_t position = NextPair(text, 0, first, second, distance);
  while (position != std::string_view::npos) {
    if (RestFollows(text, position + 1 + distance, 1 + distance)) return true;
    position = NextPair(text, position + 1, first, second, distance);
  }
  return false;
}

bool TextMatcher::FoundByCharacters(std::string_view text) const {
  for (std::size_t position = 0; position < text.size();) {
    if (TakeFolded(text, position) == part_.front() && RestFollows(text, position, 1)) return true;
  }
  return false;
}

bool TextMatcher::RestFollows(std::string_view text, std::size_t position, std::size_t first) const {
  for (std::size_t i = first; i < part_.size(); ++i) {
    if (position == text.size() || TakeFolded(text, position) != part_[i]) return false;
  }
  return true;
}

}  // namespace kestro::adapters
