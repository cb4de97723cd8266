#pragma once

#include <array>

namespace kestro::adapters {

/// Case folding of single characters as base::FoldCase maps them; a table look-up for the Latin, Greek
/// and Cyrillic alphabets.
class LetterFolding {
 public:
  LetterFolding();

  /// The character that all letter cases of `character` share.
  [[nodiscard]] char32_t Fold(char32_t character) const {
    return character < folded_.size() ? folded_[character] : FoldRare(character);
  }

 private:
  [[nodiscard]] static char32_t FoldRare(char32_t character);

  std::array<char32_t, 0x600> folded_{};
};

/// The one constant table, made at the first use.
[[nodiscard]] const LetterFolding& LetterFoldingTable();

}  // namespace kestro::adapters
