#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kestro::scenario {

/// A word of a script line.
struct Word {
  enum class Kind { kBare, kText, kPair };
  Kind kind = Kind::kBare;
  std::string text;  // of a text and a pair: without quotes, escapes resolved
  std::string key;   // of a pair (key="value")
};

struct ScriptLine {
  std::vector<Word> words;
  std::string written;  // the line without comment and surrounding blanks
};

/// Why a line cannot be read; the caller knows the line number.
class LineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Raises LineError for malformed UTF-8 and for control characters other than tab.
void CheckCharacters(std::string_view line);

/// Splits a line into words. Raises LineError for unterminated quotes and unknown escapes.
[[nodiscard]] ScriptLine SplitLine(std::string_view line);

/// "Word" in front of the first blank, and what stands behind it, blanks around both cut off.
struct FirstWord {
  std::string_view word;
  std::string_view rest;
};
[[nodiscard]] FirstWord TakeFirstWord(std::string_view line);

/// Decimal with or without "-", or 0x hexadecimal; from -2^31 to 2^32 - 1.
[[nodiscard]] std::optional<std::int64_t> ParseNumber(std::string_view word);

}  // namespace kestro::scenario
