#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kestro::scenario {

/// How values are written in scripts and transcripts.

/// A text in double quotes, with the escapes that scripts have: \" \\ \r \n \t,
/// and \xHH for other control characters.
[[nodiscard]] std::string Quoted(std::string_view text);

/// A path in double quotes, with its separators as they are.
[[nodiscard]] std::string QuotedPath(std::string_view path);

/// A text without quotes that must stay on its line: CR, LF, tab and other control characters escaped.
[[nodiscard]] std::string OneLine(std::string_view text);

/// A handle: 0x and hexadecimal digits without leading zeros.
[[nodiscard]] std::string HandleText(std::uint32_t handle);

/// " NAME=VALUE".
[[nodiscard]] std::string Named(std::string_view name, std::int64_t value);

}  // namespace kestro::scenario
