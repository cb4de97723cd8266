#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/procedure_frame.h"

namespace kestro::import {

/// Splits one line of an import file into its fields, which ";" separates. The
/// fields are the matches of
///
///     (\s*"[^"]*"\s*;)|(\s*[^;]*\s*;)
///
/// over the line with one ";" behind it, found one after the other as an
/// ECMAScript expression finds them. White space is space, tab, line feed,
/// vertical tab, form feed and carriage return; a no-break space is a letter
/// like any other, so that bytes and characters give the same fields.
///
/// The scanner reads every byte a few times at most, whatever the line holds.
class CVSParser {
 public:
  explicit CVSParser(core::LogModule& log);

  /// Puts the line's fields into `fields` and returns their number. A field loses
  /// the spaces around it (not other white space) and then its enclosing quotes.
  /// The fields are parts of the line and valid as long as it is.
  ///
  /// A field of a single quote has no two quotes to lose: the error is logged and 0 returned.
  std::int32_t ParseLine(std::string_view line, std::vector<std::string_view>& fields) const;

 private:
  core::ProcedureFrame procedure_;
};

}  // namespace kestro::import
