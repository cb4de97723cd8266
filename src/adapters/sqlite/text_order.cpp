#include "adapters/sqlite/text_order.h"

#include <algorithm>
#include <compare>
#include <string>

#include "adapters/sqlite/letter_folding.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

/// Base letters of U+00C0 to U+017F; "." where the character is no accented letter.
constexpr char32_t kFirstAccented = 0xC0;
constexpr std::string_view kBaseLetters =
    "aaaaaaaceeeeiiiidnooooo.ouuuuytsaaaaaaaceeeeiiiidnooooo.ouuuuyty"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkkllllllllllnnnnnnnnnoooooooo"
    "rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(kBaseLetters.size() == 0x180 - kFirstAccented);

struct Letter {
  char32_t base;
  char32_t folded;
  bool upper;
};

char32_t BaseLetter(char32_t folded) {
  if (folded < kFirstAccented || folded - kFirstAccented >= kBaseLetters.size()) return folded;
  const char letter = kBaseLetters[folded - kFirstAccented];
  return letter == '.' ? folded : static_cast<unsigned char>(letter);
}

Letter TakeLetter(std::string_view text, std::size_t& position) {
  const auto byte = static_cast<unsigned char>(text[position]);
  if (byte < 0x80U) {
    ++position;
    const bool upper = byte >= 'A' && byte <= 'Z';
    const char32_t folded = upper ? byte + U'a' - U'A' : byte;
    return {folded, folded, upper};
  }
  const char32_t character = base::NextCharacter(text, position);
  const char32_t folded = LetterFoldingTable().Fold(character);
  return {BaseLetter(folded), folded, folded != character};
}

/// Length of what both texts begin with, up to the start of a character.
std::size_t CommonStart(std::string_view left, std::string_view right) {
  const auto shorter = std::min(left.size(), right.size());
  const auto end = left.begin() + static_cast<std::ptrdiff_t>(shorter);
  auto length =
      static_cast<std::size_t>(std::mismatch(left.begin(), end, right.begin()).first - left.begin());
  while (length > 0 && (left[length - 1] & 0x80) != 0) --length;
  return length;
}

int Sign(std::strong_ordering order) { return std::is_lt(order) ? -1 : std::is_gt(order) ? 1 : 0; }

}  // namespace

/// The letters without accents and letter case in UTF-8, whose bytes are in the order of the characters;
/// zeros follow the last one.
TextOrderStart StartOfText(std::string_view text) {
  constexpr std::size_t kWordBytes = 8;
  constexpr std::size_t kBytes = std::tuple_size_v<TextOrderStart> * kWordBytes;
  std::array<char, kBytes> bytes{};
  std::string letter;
  for (std::size_t position = 0, size = 0; position < text.size() && size < kBytes;) {
    const char32_t base = TakeLetter(text, position).base;
    if (base < 0x80) {
      bytes[size++] = static_cast<char>(base);
      continue;
    }
    letter.clear();
    base::AppendCharacter(letter, base);
    for (std::size_t i = 0; i < letter.size() && size < kBytes; ++i) bytes[size++] = letter[i];
  }
  TextOrderStart start{};
  for (std::size_t i = 0; i < kBytes; ++i) {
    start[i / kWordBytes] = start[i / kWordBytes] << 8U | static_cast<unsigned char>(bytes[i]);
  }
  return start;
}

int CompareTextOrder(std::string_view left, std::string_view right) {
  auto accents = std::strong_ordering::equal;
  auto letter_case = std::strong_ordering::equal;
  std::size_t in_left = CommonStart(left, right);
  std::size_t in_right = in_left;
  while (in_left < left.size() && in_right < right.size()) {
    const Letter one = TakeLetter(left, in_left);
    const Letter other = TakeLetter(right, in_right);
    if (one.base != other.base) return one.base < other.base ? -1 : 1;
    if (std::is_eq(accents)) accents = one.folded <=> other.folded;
    if (std::is_eq(letter_case)) letter_case = one.upper <=> other.upper;
  }
  const bool left_ended = in_left == left.size();
  const bool right_ended = in_right == right.size();
  if (left_ended != right_ended) return left_ended ? -1 : 1;
  if (std::is_neq(accents)) return Sign(accents);
  return Sign(std::is_neq(letter_case) ? letter_case : left <=> right);
}

}  // namespace kestro::adapters
