#pragma once

#include <string>
#include <string_view>

namespace kestro::contacts {

/// The one form in which numbers are compared: "+", country, number. The home
/// country is +420. Digits as the exchange delivers them; nothing but a prefix
/// is looked at, so "101" becomes "+420101". A single character stays as it is.
[[nodiscard]] std::string InternationalCallerId(std::string_view caller_id);

/// A number as people type it without its blanks, slashes, dashes, dots and brackets.
[[nodiscard]] std::string WithoutSeparators(std::string_view text);

/// The international form of a number as people type it.
[[nodiscard]] std::string InternationalCallerIdFromText(std::string_view text);

}  // namespace kestro::contacts
