#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kestro::exchange {

/// A request that is not carried out; what() is the reason for the person who made it.
class RequestError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct RequestWord {
  std::string text;     // UTF-8, without its quotes
  bool quoted = false;  // a quoted word is never an option
};

/// The words of a request line: separated by blanks; double quotes around a word
/// with blanks, inside them \" and \\ . Raises RequestError for text that is not
/// UTF-8, control characters (a line break is one), and quotes that do not match.
[[nodiscard]] std::vector<RequestWord> SplitRequest(std::string_view line);

/// The word as SplitRequest reads it back: always in quotes.
[[nodiscard]] std::string QuoteRequestWord(std::string_view text);

}  // namespace kestro::exchange
