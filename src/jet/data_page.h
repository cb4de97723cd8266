#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/bytes.h"
#include "jet/page.h"
#include "jet/page_ref.h"

namespace kestro::jet {

/// Data page: a header of 14 bytes, a word a slot, and the rows, which grow down from the end of the page in
/// the order of the slots. Also the home of long values and usage maps.
inline constexpr std::size_t kDataHeaderSize = 14;
inline constexpr std::size_t kMostSlots = 255;
inline constexpr std::size_t kLongestRow = kPageSize - kDataHeaderSize - 2;
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"

inline constexpr std::uint16_t kSlotMoved = 0x4000;   // the row is elsewhere: a data pointer is here
inline constexpr std::uint16_t kSlotTarget = 0x8000;  // reached through a moved slot only
inline constexpr std::uint16_t kSlotDeleted = kSlotMoved | kSlotTarget;

struct Slot {
  std::size_t start = 0;
  std::size_t end = 0;
  std::uint16_t flags = 0;

  [[nodiscard]] std::size_t size() const { return end - start; }
  [[nodiscard]] bool IsDeleted() const { return flags == kSlotDeleted; }
};

/// Reads a data page. All accesses throw kDamaged when the page contradicts itself.
class DataPage {
 public:
  explicit DataPage(ByteSpan bytes) : bytes_(bytes) {}

  [[nodiscard]] std::uint32_t owner() const { return Load32(bytes_, 4); }
  [[nodiscard]] std::size_t slot_count() const { return Load16(bytes_, 12); }

  /// Kept in the page; ComputeFree() is what it must be.
  [[nodiscard]] std::size_t free() const { return Load16(bytes_, 2); }
  [[nodiscard]] std::size_t ComputeFree() const;

  [[nodiscard]] Slot slot(std::size_t index) const;
  [[nodiscard]] ByteSpan row(const Slot& slot) const { return bytes_.subspan(slot.start, slot.size()); }
  [[nodiscard]] ByteSpan row(std::size_t index) const { return row(slot(index)); }

  /// True when every slot is a deleted one.
  [[nodiscard]] bool IsEmpty() const;

 private:
  ByteSpan bytes_;
};

/// Changes a data page: keeps the slots in order and the free-space word exact.
class DataPageEdit {
 public:
  explicit DataPageEdit(MutableBytes bytes) : bytes_(bytes) {}

  static void Format(MutableBytes page, std::uint32_t owner);

  /// Whether Add has room for a row of this size.
  [[nodiscard]] static bool HasRoom(const DataPage& page, std::size_t size);

  /// Returns the slot. Takes over a deleted one only when slots become scarce.
  std::size_t Add(ByteSpan row, std::uint16_t flags);

  /// Makes a row longer or shorter; its bytes are undefined then. kDamaged when there is no room.
  MutableBytes Resize(std::size_t index, std::size_t size);

  void SetFlags(std::size_t index, std::uint16_t flags);

  /// The slot stays, marked deleted and empty.
  void Remove(std::size_t index);

  [[nodiscard]] DataPage view() const { return DataPage(bytes_); }

 private:
  MutableBytes bytes_;
};

}  // namespace kestro::jet
