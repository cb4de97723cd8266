#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestro::adapters {

/// Splits a command line into its words; no shell is asked, so nothing in it is
/// expanded. Blanks separate words. Between double quotes everything
/// belongs to the word, \" and \\ being a quote and a backslash; between single
/// quotes there is no exception at all. Quotes may begin inside a word; "" is an
/// empty word. Raises 5 for a quote that is not closed and for a control
/// character.
[[nodiscard]] std::vector<std::string> SplitCommandWords(std::string_view command);

/// The words with every "%n" replaced by the number, which stays in its word
/// whatever it holds ("%%" is a percent sign). When no word has a "%n", the
/// number is one more word. Raises 5 when the number would stand at the
/// beginning of a word and begins with "-": the command would take it for an option.
[[nodiscard]] std::vector<std::string> WithNumber(const std::vector<std::string>& words,
                                                  std::string_view number);

}  // namespace kestro::adapters
