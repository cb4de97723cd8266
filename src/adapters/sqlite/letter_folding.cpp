#include "adapters/sqlite/letter_folding.h"

#include <string>

#include "base/text.h"

namespace kestro::adapters {

LetterFolding::LetterFolding() {
  for (char32_t character = 0; character < folded_.size(); ++character) {
    folded_[character] = FoldRare(character);
  }
}

char32_t LetterFolding::FoldRare(char32_t character) {
  std::string text;
  base::AppendCharacter(text, character);
  std::size_t position = 0;
  return base::NextCharacter(base::FoldCase(text), position);
}

const LetterFolding& LetterFoldingTable() {
  static const LetterFolding kFolding;
  return kFolding;
}

}  // namespace kestro::adapters
