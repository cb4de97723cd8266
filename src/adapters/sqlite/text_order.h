#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string_view>

namespace kestro::adapters {

/// Alphabetical order of two UTF-8 texts: below, equal to or above zero. Letters count first, Latin ones
/// without their accents; between texts with the same letters the accents decide, then the letter case
/// (lower first), then the bytes. A total order: zero only for identical texts.
[[nodiscard]] int CompareTextOrder(std::string_view left, std::string_view right);

/// What a text begins with, in a form that compares fast: texts with different starts are in the order of
/// these, equal starts say nothing.
using TextOrderStart = std::array<std::uint64_t, 2>;
[[nodiscard]] TextOrderStart StartOfText(std::string_view text);

}  // namespace kestro::adapters
