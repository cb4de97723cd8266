#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "exchange/exchange.h"

namespace kestro::exchange {

/// Each fills the caller's buffer (see StructureWriter) and returns 0 or
/// LINEERR_STRUCTURETOOSMALL when not even the fixed part fits; then the buffer
/// stays as it was.

[[nodiscard]] ports::LineResult WriteCallInfo(const Call& call, ports::LineHandle line, std::uint32_t device,
                                              std::span<std::uint8_t> buffer);
[[nodiscard]] ports::LineResult WriteDevCaps(const Device& device, std::uint32_t number,
                                             std::span<std::uint8_t> buffer);
/// The exchange dials what it is given: both strings are the address itself.
[[nodiscard]] ports::LineResult WriteTranslateOutput(std::string_view ansi_address,
                                                     std::span<std::uint8_t> buffer);

/// The exchange can dial the address: digits, tone keys, pauses and the marks
/// that people put between them, at least one of them a key.
[[nodiscard]] bool IsDialable(std::string_view ansi_address);

}  // namespace kestro::exchange
