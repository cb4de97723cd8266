#pragma once

#include <span>
#include <string_view>

namespace kestro::contacts {

/// What the lists of a new database hold.
[[nodiscard]] std::span<const std::string_view> InitialPhoneTypes();
[[nodiscard]] std::span<const std::string_view> InitialPositions();
[[nodiscard]] std::span<const std::string_view> InitialCountries();

}  // namespace kestro::contacts
