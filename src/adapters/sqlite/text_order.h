#pragma once

#include <string_view>

namespace kestro::adapters {

/// Alphabetical order of two UTF-8 texts: below, equal to or above zero. Letters count first, Latin ones
/// without their accents; between texts with the same letters the accents decide, then the letter case
/// (lower first), then the bytes. A total order: zero only for identical texts.
///
/// Databases hold an index in this order. A change of it is a change of their format: files made before need
/// their indexes built anew (REINDEX), or rows would not be found in them.
[[nodiscard]] int CompareTextOrder(std::string_view left, std::string_view right);

}  // namespace kestro::adapters
