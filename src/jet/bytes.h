#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "jet/error.h"

namespace kestro::jet {

/// Integers in the byte order of the file (little-endian unless "Big" is said). Every access is checked
/// against the span: what is read comes from files, and an offset outside is reported as damage.

using ByteSpan = std::span<const std::uint8_t>;
using MutableBytes = std::span<std::uint8_t>;

[[noreturn]] inline void ThrowOutside() {
  throw Error(ErrorKind::kDamaged, "An offset in the file points outside its page");
}

inline void CheckInside(std::size_t size, std::size_t offset, std::size_t count) {
  if (offset > size || count > size - offset) ThrowOutside();
}

inline ByteSpan Part(ByteSpan bytes, std::size_t offset, std::size_t count) {
  CheckInside(bytes.size(), offset, count);
  return bytes.subspan(offset, count);
}

inline MutableBytes Part(MutableBytes bytes, std::size_t offset, std::size_t count) {
  CheckInside(bytes.size(), offset, count);
  return bytes.subspan(offset, count);
}

inline std::uint8_t Load8(ByteSpan bytes, std::size_t offset) {
  CheckInside(bytes.size(), offset, 1);
  return bytes[offset];
}

inline std::uint16_t Load16(ByteSpan bytes, std::size_t offset) {
  CheckInside(bytes.size(), offset, 2);
  return static_cast<std::uint16_t>(bytes[offset] | (bytes[offset + 1] << 8));
}

inline std::uint32_t Load32(ByteSpan bytes, std::size_t offset) {
  CheckInside(bytes.size(), offset, 4);
  const std::uint8_t* at = bytes.data() + offset;
  return static_cast<std::uint32_t>(at[0]) | (static_cast<std::uint32_t>(at[1]) << 8) |
         (static_cast<std::uint32_t>(at[2]) << 16) | (static_cast<std::uint32_t>(at[3]) << 24);
}

inline std::uint64_t Load64(ByteSpan bytes, std::size_t offset) {
  CheckInside(bytes.size(), offset, 8);
  const ByteSpan rest = bytes.subspan(offset, 8);
  return Load32(rest, 0) | (static_cast<std::uint64_t>(Load32(rest, 4)) << 32);
}

inline std::uint32_t LoadBig24(ByteSpan bytes, std::size_t offset) {
  CheckInside(bytes.size(), offset, 3);
  return (static_cast<std::uint32_t>(bytes[offset]) << 16) |
         (static_cast<std::uint32_t>(bytes[offset + 1]) << 8) | bytes[offset + 2];
}

inline std::uint32_t LoadBig32(ByteSpan bytes, std::size_t offset) {
  return (static_cast<std::uint32_t>(Load8(bytes, offset)) << 24) | LoadBig24(bytes, offset + 1);
}

inline void Store8(MutableBytes bytes, std::size_t offset, std::uint8_t value) {
  CheckInside(bytes.size(), offset, 1);
  bytes[offset] = value;
}

inline void Store16(MutableBytes bytes, std::size_t offset, std::uint16_t value) {
  CheckInside(bytes.size(), offset, 2);
  bytes[offset] = static_cast<std::uint8_t>(value);
  bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

inline void Store32(MutableBytes bytes, std::size_t offset, std::uint32_t value) {
  CheckInside(bytes.size(), offset, 4);
  for (std::size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

inline void Store64(MutableBytes bytes, std::size_t offset, std::uint64_t value) {
  CheckInside(bytes.size(), offset, 8);
  for (std::size_t i = 0; i < 8; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

inline void StoreBig24(MutableBytes bytes, std::size_t offset, std::uint32_t value) {
  CheckInside(bytes.size(), offset, 3);
  for (std::size_t i = 0; i < 3; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (16 - 8 * i));
}

inline void StoreBig32(MutableBytes bytes, std::size_t offset, std::uint32_t value) {
  Store8(bytes, offset, static_cast<std::uint8_t>(value >> 24));
  StoreBig24(bytes, offset + 1, value & 0xFFFFFF);
}

inline void Copy(MutableBytes to, std::size_t offset, ByteSpan from) {
  CheckInside(to.size(), offset, from.size());
  if (!from.empty()) std::memmove(to.data() + offset, from.data(), from.size());
}

inline int Compare(ByteSpan left, ByteSpan right) {
  const std::size_t common = left.size() < right.size() ? left.size() : right.size();
  const int order = common == 0 ? 0 : std::memcmp(left.data(), right.data(), common);
  if (order != 0) return order;
  return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

}  // namespace kestro::jet
