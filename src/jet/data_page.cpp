#include "jet/data_page.h"

#include <cstring>
#include <optional>
#include <string>

#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr std::uint16_t kOffsetMask = 0x1FFF;
constexpr std::uint16_t kFlagsMask = 0xC000;

// Below this number of slots a new row gets a new slot: row ids are rather not given twice.
constexpr std::size_t kSlotsBeforeReuse = 96;

[[noreturn]] void ThrowDamaged() {
  throw Error(ErrorKind::kDamaged, "The rows of a data page are in disorder");
}

std::size_t SlotAt(std::size_t index) { return kDataHeaderSize + 2 * index; }

std::optional<std::size_t> FindDeleted(const DataPage& page) {
  const std::size_t count = page.slot_count();
  if (count < kSlotsBeforeReuse) return std::nullopt;
  for (std::size_t i = 0; i < count; ++i) {
    const Slot slot = page.slot(i);
    if (slot.IsDeleted() && slot.size() == 0) return i;
  }
  return std::nullopt;
}

}  // namespace

Slot DataPage::slot(std::size_t index) const {
  const std::size_t count = slot_count();
  if (index >= count || SlotAt(count) > kPageSize) ThrowDamaged();
  const std::uint16_t word = Load16(bytes_, SlotAt(index));
  Slot slot;
  slot.start = word & kOffsetMask;
  slot.end = index == 0 ? kPageSize : Load16(bytes_, SlotAt(index - 1)) & kOffsetMask;
  slot.flags = word & kFlagsMask;
  if (slot.start > slot.end || slot.end > kPageSize || slot.start < SlotAt(count)) ThrowDamaged();
  return slot;
}

std::size_t DataPage::ComputeFree() const {
  const std::size_t count = slot_count();
  if (count == 0) return kPageSize - kDataHeaderSize;
  return slot(count - 1).start - SlotAt(count);
}

bool DataPage::IsEmpty() const {
  const std::size_t count = slot_count();
  for (std::size_t i = 0; i < count; ++i) {
    if (!slot(i).IsDeleted()) return false;
  }
  return true;
}

void DataPageEdit::Format(MutableBytes page, std::uint32_t owner) {
  std::memset(page.data(), 0, page.size());
  Store16(page, 0, PageMark(PageType::kData));
  Store16(page, 2, kPageSize - kDataHeaderSize);
  Store32(page, 4, owner);
}

bool DataPageEdit::HasRoom(const DataPage& page, std::size_t size) {
  const std::size_t free = page.ComputeFree();
  if (free >= size + 2 && page.slot_count() < kMostSlots) return true;
  return free >= size && FindDeleted(page).has_value();
}

std::size_t DataPageEdit::Add(ByteSpan row, std::uint16_t flags) {
  const DataPage page = view();
  if (const std::optional<std::size_t> deleted = FindDeleted(page)) {
    Copy(Resize(*deleted, row.size()), 0, row);
    SetFlags(*deleted, flags);
    return *deleted;
  }
  const std::size_t index = page.slot_count();
  const std::size_t free = page.ComputeFree();
  if (free < row.size() + 2 || index >= kMostSlots) ThrowDamaged();
  const std::size_t start = (index == 0 ? kPageSize : page.slot(index - 1).start) - row.size();
  Copy(bytes_, start, row);
  Store16(bytes_, SlotAt(index), static_cast<std::uint16_t>(start | flags));
  Store16(bytes_, 12, static_cast<std::uint16_t>(index + 1));
  Store16(bytes_, 2, static_cast<std::uint16_t>(free - row.size() - 2));
  return index;
}

MutableBytes DataPageEdit::Resize(std::size_t index, std::size_t size) {
  const DataPage page = view();
  const Slot slot = page.slot(index);
  const std::size_t count = page.slot_count();
  const std::size_t free = page.ComputeFree();
  if (size > slot.size() + free) ThrowDamaged();
  if (Load16(bytes_, 0) != PageMark(PageType::kData)) ThrowDamaged();
  for (std::size_t i = index; i < count; ++i) (void)page.slot(i);  // all that move are in order
  const std::size_t lowest = page.slot(count - 1).start;
  const std::size_t start = slot.end - size;
  // The rows below move up or down as one block.
  std::memmove(bytes_.data() + lowest + slot.size() - size, bytes_.data() + lowest, slot.start - lowest);
  for (std::size_t i = index; i < count; ++i) {
    const std::uint16_t word = Load16(bytes_, SlotAt(i));
    const std::size_t moved = (word & kOffsetMask) + slot.size() - size;
    if (moved > kPageSize) ThrowDamaged();
    Store16(bytes_, SlotAt(i), static_cast<std::uint16_t>(moved | (word & kFlagsMask)));
  }
  Store16(bytes_, 2, static_cast<std::uint16_t>(free + slot.size() - size));
  return bytes_.subspan(start, size);
}

void DataPageEdit::SetFlags(std::size_t index, std::uint16_t flags) {
  const Slot slot = view().slot(index);
  Store16(bytes_, SlotAt(index), static_cast<std::uint16_t>(slot.start | flags));
}

void DataPageEdit::Remove(std::size_t index) {
  (void)Resize(index, 0);
  SetFlags(index, kSlotDeleted);
}

}  // namespace kestro::jet
