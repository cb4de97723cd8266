#pragma once

#include <compare>
#include <cstdint>

namespace kestro::jet {

/// Names a row of a table for as long as the row lives: changing the row keeps it. After a deletion it may
/// be given to a new row.
struct RowId {
  std::uint32_t page = 0;
  std::uint8_t slot = 0;

  /// A positive number that fits into 32 bits, for callers that know rows by number.
  [[nodiscard]] std::int64_t ToNumber() const { return (static_cast<std::int64_t>(page) << 8) | slot; }
  static RowId FromNumber(std::int64_t number) {
    return {static_cast<std::uint32_t>((number >> 8) & 0xFFFFFFFF), static_cast<std::uint8_t>(number & 0xFF)};
  }

  friend auto operator<=>(const RowId&, const RowId&) = default;
};

}  // namespace kestro::jet
