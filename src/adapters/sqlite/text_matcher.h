#pragma once

#include <string>
#include <string_view>

#include "adapters/sqlite/letter_folding.h"

namespace kestro::adapters {

/// Looks for one part in many UTF-8 texts, ignoring the letter case of all letters (as base::FoldCase
/// does). No character of the part has a special meaning. Looking costs no allocation.
class TextMatcher {
 public:
  explicit TextMatcher(std::string_view part);

  /// True when `text` contains the part; an empty part is in every text.
  [[nodiscard]] bool FoundIn(std::string_view text) const;

 private:
  [[nodiscard]] char32_t TakeFolded(std::string_view text, std::size_t& position) const;
  /// Looks for the part's characters in ASCII as bytes: misses other spellings of these.
  [[nodiscard]] bool FoundByBytes(std::string_view text) const;
  [[nodiscard]] bool FoundByCharacters(std::string_view text) const;
  /// The part from its character `first` on follows at `position` of the text.
  [[nodiscard]] bool RestFollows(std::string_view text, std::size_t position, std::size_t first) const;

  const LetterFolding& folding_;
  std::u32string part_;      // folded
  std::string ascii_start_;  // what the part begins with, as far as it is ASCII
};

}  // namespace kestro::adapters
