#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "jet/bytes.h"

namespace kestro::jet {

/// "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}", upper case; of 16 stored bytes.
std::string GuidText(ByteSpan stored);
std::optional<std::array<std::uint8_t, 16>> ParseGuid(std::string_view text);

/// Decimal digits with a point before the last `scale` ones; of 17 stored bytes (sign, four words).
std::string NumericText(ByteSpan stored, std::size_t scale);

}  // namespace kestro::jet
