#pragma once

#include <string>
#include <string_view>

#include "adapters/sqlite/letter_folding.h"
#include "adapters/sqlite/pair_scan.h"

namespace kestro::adapters {

/// Looks for one part in many texts, ignoring the letter case of all letters (as base::FoldCase does). No
/// character of the part has a special meaning. Looking costs no allocation.
class TextMatcher {
 public:
  /// The part is UTF-8.
  explicit TextMatcher(std::string_view part);

  /// True when the text, in UTF-8, contains the part; an empty part is in every text.
  [[nodiscard]] bool FoundIn(std::string_view text) const;
  /// The same for a text with a byte a character, and for one in UTF-16LE, where an odd last byte is ignored.
  [[nodiscard]] bool FoundInLatin1(std::string_view text) const;
  [[nodiscard]] bool FoundInUtf16(std::string_view text) const;

 private:
  [[nodiscard]] std::u32string Folded(std::string_view part) const;
  template <typename Form>
  [[nodiscard]] bool FoundInForm(std::string_view text) const;
  /// Looks for the part's characters in ASCII as bytes: misses other spellings of these.
  template <typename Form>
  [[nodiscard]] bool FoundByBytes(std::string_view text) const;
  template <typename Form>
  [[nodiscard]] bool FoundByCharacters(std::string_view text) const;
  template <typename Form>
  [[nodiscard]] bool StandsAt(std::string_view text, std::size_t position) const;
  template <typename Form>
  [[nodiscard]] char32_t TakeFolded(std::string_view text, std::size_t& position) const;

  const LetterFolding& folding_;
  std::u32string part_;      // folded
  std::string ascii_start_;  // what the part begins with, as far as it is ASCII
  PairScan byte_scan_;       // for the beginning of ascii_start_, in a byte a character
  PairScan utf16_scan_;
};

}  // namespace kestro::adapters
