#pragma once

#include <string>
#include <string_view>

#include "adapters/posix/settings_table.h"

namespace kestro::adapters {

/// The settings as text that people can read and edit (UTF-8):
///
///   # a comment
///   [Software\Kestro\CTI]
///   DatabasePath=\\home\\user\\CTIDB.mdb
///
/// In names and texts "\" starts an escape: \\ \n \r \t and \xHH, one byte in
/// hexadecimal. Escaped are "\", what no editor shows, bytes that are not UTF-8,
/// blanks at either end, and what a name cannot hold as it is.
[[nodiscard]] std::string FormatSettings(const SettingsTable& settings);

struct ParsedSettings {
  SettingsTable settings;
  std::string damage;  // why the text is none of ours, for the log; empty = it is
};

/// Tolerates what editors do: blanks around "=" and at the ends of a line, CR LF,
/// a byte order mark, empty lines, no line end at the end. Of two values of a
/// name the last one counts.
[[nodiscard]] ParsedSettings ParseSettings(std::string_view text);

}  // namespace kestro::adapters
