#include "jet/page_space.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>

#include "jet/data_page.h"
#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr PageNumber kMapPage = 1;
constexpr std::size_t kMapSlot = 0;
constexpr std::size_t kBitsAt = 5;  // type, start page
constexpr std::size_t kFreshMapSize = 69;

struct GlobalMap {
  PageRef page;
  ByteSpan row;
  PageNumber start = 0;

  [[nodiscard]] PageNumber end() const { return start + static_cast<PageNumber>((row.size() - kBitsAt) * 8); }
  [[nodiscard]] bool Bit(PageNumber number) const {
    if (number < start || number >= end()) return false;
    return (row[kBitsAt + (number - start) / 8] >> ((number - start) % 8) & 1) != 0;
  }
};

GlobalMap ReadMap(Pager& pager) {
  GlobalMap map;
  map.page = pager.Read(kMapPage);
  if (!map.page.Is(PageType::kData))
    throw Error(ErrorKind::kDamaged, "The map of free pages is no data page");
  map.row = DataPage(map.page.bytes()).row(kMapSlot);
  if (map.row.size() < kBitsAt || map.row[0] != 0) {
    throw Error(ErrorKind::kDamaged, "The map of free pages has an unknown form");
  }
  map.start = Load32(map.row, 1);
  if (map.start >= kMostPages || map.start % 8 != 0) {
    throw Error(ErrorKind::kDamaged, "The map of free pages starts outside the file");
  }
  return map;
}

}  // namespace

const char* PageSpace::ReadOnlyReason() const {
  try {
    (void)ReadMap(pager_);
    return "";
  } catch (const Error&) {
    return "The map of free pages has a form that is not supported";
  }
}

bool PageSpace::IsFree(PageNumber page) const { return ReadMap(pager_).Bit(page); }

PageNumber PageSpace::FindFree() {
  const GlobalMap map = ReadMap(pager_);
  const PageNumber end = std::min(map.end(), pager_.page_count());
  for (PageNumber page = std::max(map.start, lowest_); page < end;) {
    const std::uint8_t bits = map.row[kBitsAt + (page - map.start) / 8];
    const auto rest = static_cast<std::uint8_t>(bits >> ((page - map.start) % 8));
    if (rest != 0) {
      page += static_cast<PageNumber>(std::countr_zero(rest));
      if (page < end) return page;
      break;
    }
    page += 8 - (page - map.start) % 8;
  }
  return pager_.page_count();
}

PageEdit PageSpace::Allocate() {
  const PageNumber page = FindFree();
  if (page < 2) throw Error(ErrorKind::kDamaged, "The map of free pages offers the file's first pages");
  lowest_ = page;
  if (page == pager_.page_count()) {
    if (page >= ReadMap(pager_).end()) Lengthen(page);
    SetBit(page, false);
    return pager_.Append();
  }
  SetBit(page, false);
  PageEdit edit = pager_.Edit(page);
  std::ranges::fill(edit.edit(), std::uint8_t{0});
  return edit;
}

// In steps of four bytes; the new bits say free.
void PageSpace::Lengthen(PageNumber page) {
  const PageEdit edit = pager_.Edit(kMapPage);
  DataPageEdit data(edit.edit());
  while (page >= ReadMap(pager_).end()) {
    const ByteSpan row = data.view().row(kMapSlot);
    if (data.view().ComputeFree() < 4) {
      throw Error(ErrorKind::kFull, "The database has as many pages as its map of free pages can hold");
    }
    const std::vector<std::uint8_t> old(row.begin(), row.end());
    const MutableBytes longer = data.Resize(kMapSlot, old.size() + 4);
    std::ranges::fill(longer, std::uint8_t{0xFF});
    Copy(longer, 0, old);
  }
}

void PageSpace::SetBit(PageNumber page, bool free) {
  const PageNumber start = ReadMap(pager_).start;
  const PageEdit edit = pager_.Edit(kMapPage);
  const Slot slot = DataPage(edit.bytes()).slot(kMapSlot);
  if (page < start) throw Error(ErrorKind::kDamaged, "A page is not in the map of free pages");
  const std::size_t at = kBitsAt + (page - start) / 8;
  const MutableBytes row = edit.edit().subspan(slot.start, slot.size());
  const auto bit = static_cast<std::uint8_t>(1U << ((page - start) % 8));
  const std::uint8_t old = Load8(row, at);
  Store8(row, at, static_cast<std::uint8_t>(free ? old | bit : old & ~bit));
}

void PageSpace::Free(PageNumber page) {
  if (page < 2 || page >= pager_.page_count() || IsFree(page)) {
    throw Error(ErrorKind::kDamaged, "Page " + std::to_string(page) + " is to be freed, but is not in use");
  }
  SetBit(page, true);
  lowest_ = std::min(lowest_, page);
}

void PageSpace::FormatGlobalMap(MutableBytes page, std::size_t used) {
  DataPageEdit::Format(page, 1);
  std::array<std::uint8_t, kFreshMapSize> row{};
  DataPageEdit data(page);
  std::fill(row.begin() + kBitsAt, row.end(), std::uint8_t{0xFF});
  for (std::size_t i = 0; i < used; ++i) {
    row[kBitsAt + i / 8] = static_cast<std::uint8_t>(row[kBitsAt + i / 8] & ~(1U << (i % 8)));
  }
  data.Add(row, 0);
  row.fill(0);
  data.Add(row, 0);
}

}  // namespace kestro::jet
