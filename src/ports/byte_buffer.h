#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/runtime_error.h"

namespace kestro::ports {

/// The little-endian double word at `offset`. Raises subscript out of range (9)
/// unless all four bytes lie inside the buffer.
[[nodiscard]] inline std::uint32_t ReadDword(std::span<const std::uint8_t> buffer, std::size_t offset) {
  if (buffer.size() < 4 || offset > buffer.size() - 4) base::RaiseSubscriptOutOfRange();
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = (value << 8U) | buffer[offset + i];
  return value;
}

/// Writes a little-endian double word; raises 9 like ReadDword and then writes nothing.
inline void WriteDword(std::span<std::uint8_t> buffer, std::size_t offset, std::uint32_t value) {
  if (buffer.size() < 4 || offset > buffer.size() - 4) base::RaiseSubscriptOutOfRange();
  for (std::size_t i = 0; i < 4; ++i) buffer[offset + i] = static_cast<std::uint8_t>(value >> (8U * i));
}

/// The `size` bytes at `offset`, valid as long as the buffer; raises 9 when they
/// do not all lie inside it (no sum of hostile values wraps around).
[[nodiscard]] inline std::string_view ReadBytes(std::span<const std::uint8_t> buffer, std::size_t offset,
                                                std::size_t size) {
  if (offset > buffer.size() || size > buffer.size() - offset) base::RaiseSubscriptOutOfRange();
  const auto bytes = buffer.subspan(offset, size);
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace kestro::ports
