#pragma once

#include <cstddef>
#include <cstdint>

namespace kestro::jet {

using PageNumber = std::uint32_t;

inline constexpr std::size_t kPageSize = 4096;
/// 2 GiB: no valid page has this number or a higher one.
inline constexpr PageNumber kMostPages = 0x80000;

/// The first byte of a page; the second one is always 1.
enum class PageType : std::uint8_t {
  kHeader = 0,
  kData = 1,  // rows, long values, usage maps
  kDefinition = 2,
  kIndexNode = 3,
  kIndexLeaf = 4,
  kUsageMap = 5,
};

inline constexpr std::uint16_t PageMark(PageType type) {
  return static_cast<std::uint16_t>(0x0100 | static_cast<std::uint16_t>(type));
}

/// Where a row lies: stored as one byte slot, three bytes page.
struct DataPointer {
  PageNumber page = 0;
  std::uint8_t slot = 0;

  static DataPointer FromStored(std::uint32_t stored) {
    return {stored >> 8, static_cast<std::uint8_t>(stored & 0xFF)};
  }
  [[nodiscard]] std::uint32_t Stored() const { return (page << 8) | slot; }
  [[nodiscard]] bool IsNone() const { return page == 0; }
  friend bool operator==(const DataPointer&, const DataPointer&) = default;
};

}  // namespace kestro::jet
