#pragma once

#include <string>
#include <string_view>

namespace kestro::base {

/// Appends the text so that it stays on its line and harms no terminal: control
/// characters and line separators become \r, \n, \t, \xHH or \u2028, and so does a
/// byte that is not UTF-8. Everything else, "\" too, stays as it is.
void AppendOnOneLine(std::string& line, std::string_view text);

}  // namespace kestro::base
