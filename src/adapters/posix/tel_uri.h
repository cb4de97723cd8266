#pragma once

#include <string>
#include <string_view>

namespace kestro::adapters {

/// The number as an address that telephone programs of the desktop take,
/// "tel:+420602111222". Digits, plus, * and # stay (the last as %23, since a
/// plain # begins another part of an address); blanks, dashes, dots, slashes and
/// brackets go; the bytes of anything else are percent-encoded.
[[nodiscard]] std::string TelUri(std::string_view number);

/// "%XX" for the byte, appended.
void AppendPercentEncoded(std::string& uri, char byte);

}  // namespace kestro::adapters
