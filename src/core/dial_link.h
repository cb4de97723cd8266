#pragma once

#include <string>
#include <string_view>

namespace kestro::core {

/// Most digits of a number that a link may ask for.
inline constexpr std::size_t kMostLinkDigits = 32;

/// The text begins as a link that asks for a call, "tel:" or "callto:" (letter
/// case does not count). Says nothing about the rest.
[[nodiscard]] bool IsDialLink(std::string_view text);

/// The number of a link, "602111222" or "+420602111222"; empty when the link is
/// none or holds no number that may be dialled.
///
/// Links come from any web page, so little is taken: digits, a plus in front and
/// the separators blank - . ( ) /, also percent-encoded; "//" in front and
/// parameters behind ";" are left out. Refused: * and # (an exchange would take
/// them for an order, such as diverting calls), letters, control characters, a
/// percent sign that encodes nothing of this, more than kMostLinkDigits digits or
/// 256 bytes.
[[nodiscard]] std::string NumberOfLink(std::string_view link);

/// The text has the form that NumberOfLink delivers and is not empty.
[[nodiscard]] bool IsLinkNumber(std::string_view text);

}  // namespace kestro::core
