#include "jet/page_space.h"

#include <algorithm>
#include <array>
#include <string>

#include "jet/data_page.h"
#include "jet/error.h"
#include "jet/page_bits.h"

namespace kestro::jet {
namespace {

constexpr PageNumber kMapPage = 1;
constexpr std::size_t kMapSlot = 0;
constexpr std::size_t kBitsAt = 5;      // of a row with bits: behind type and start page
constexpr std::size_t kPointersAt = 1;  // of a row with page numbers: behind the type
constexpr std::size_t kPointerSize = 4;
constexpr std::size_t kFreshMapSize = 69;  // as page numbers more than enough for 2 GiB

std::size_t PointerAt(std::size_t position) { return kPointersAt + kPointerSize * position; }

// Pages that do not exist yet are free, those that do are not.
void MarkBeyond(MutableBytes bits, PageNumber first, PageNumber page_count) {
  for (PageNumber bit = 0; bit < bits.size() * 8; ++bit) SetPageBit(bits, bit, first + bit >= page_count);
}

}  // namespace

/// The row of page 1.
struct PageSpace::Map {
  PageRef page;
  Slot slot;
  ByteSpan row;

  [[nodiscard]] bool IsInline() const { return row[0] == 0; }
  [[nodiscard]] PageNumber start() const { return Load32(row, 1); }
  [[nodiscard]] std::size_t pointers() const { return (row.size() - kPointersAt) / kPointerSize; }
  [[nodiscard]] PageNumber pointer(std::size_t i) const { return Load32(row, PointerAt(i)); }
};

/// Bits that lie together on one page.
struct PageSpace::Stretch {
  PageRef page;
  std::size_t at = 0;  // of the bits on the page
  std::size_t size = 0;
  PageNumber first = 0;  // the page that the first bit stands for

  [[nodiscard]] PageNumber end() const { return first + static_cast<PageNumber>(size * 8); }
  [[nodiscard]] bool Holds(PageNumber number) const { return number >= first && number < end(); }
  [[nodiscard]] ByteSpan bits() const { return page.bytes().subspan(at, size); }
};

PageSpace::Map PageSpace::ReadMap() const {
  Map map;
  map.page = pager_.Read(kMapPage);
  if (!map.page.Is(PageType::kData))
    throw Error(ErrorKind::kDamaged, "The map of free pages is no data page");
  const DataPage data(map.page.bytes());
  map.slot = data.slot(kMapSlot);
  map.row = data.row(map.slot);
  if (map.row.size() < kBitsAt || map.row[0] > 1) {
    throw Error(ErrorKind::kDamaged, "The map of free pages has an unknown form");
  }
  if (map.IsInline() && (map.start() >= kMostPages || map.start() % 8 != 0)) {
    throw Error(ErrorKind::kDamaged, "The map of free pages starts outside the file");
  }
  return map;
}

// The bits of `page`, or the next ones behind it.
std::optional<PageSpace::Stretch> PageSpace::StretchFrom(PageNumber page) const {
  const Map map = ReadMap();
  if (map.IsInline()) {
    const Stretch all{map.page, map.slot.start + kBitsAt, map.row.size() - kBitsAt, map.start()};
    return page < all.end() ? std::optional(all) : std::nullopt;
  }
  for (std::size_t i = page / kBitsPerPage; i < map.pointers(); ++i) {
    const PageNumber first = static_cast<PageNumber>(i) * kBitsPerPage;
    if (first >= kMostPages) break;
    if (map.pointer(i) == 0) continue;
    return Stretch{ReadBitsPage(pager_, map.pointer(i)), kPageBitsAt, kBitsPerPage / 8, first};
  }
  return std::nullopt;
}

bool PageSpace::Covers(PageNumber page) const {
  const std::optional<Stretch> stretch = StretchFrom(page);
  return stretch && stretch->Holds(page);
}

std::vector<PageNumber> PageSpace::OwnPages() const {
  std::vector<PageNumber> pages;
  const Map map = ReadMap();
  for (std::size_t i = 0; !map.IsInline() && i < map.pointers(); ++i) {
    if (map.pointer(i) != 0) pages.push_back(map.pointer(i));
  }
  return pages;
}

const char* PageSpace::ReadOnlyReason() const {
  try {
    for (const PageNumber page : OwnPages()) (void)ReadBitsPage(pager_, page);
    return "";
  } catch (const Error&) {
    return "The map of free pages has a form that is not supported";
  }
}

bool PageSpace::IsFree(PageNumber page) const {
  const std::optional<Stretch> stretch = StretchFrom(page);
  if (!stretch || !stretch->Holds(page)) return false;
  return FindPageBit(stretch->bits(), page - stretch->first) == page - stretch->first;
}

PageNumber PageSpace::FindFree() const {
  const PageNumber count = pager_.page_count();
  std::optional<Stretch> stretch;
  for (PageNumber page = lowest_; page < count && (stretch = StretchFrom(page)); page = stretch->end()) {
    const PageNumber from = page > stretch->first ? page - stretch->first : 0;
    if (const auto bit = FindPageBit(stretch->bits(), from)) return std::min(stretch->first + *bit, count);
  }
  return count;
}

PageEdit PageSpace::Allocate() {
  lowest_ = FindFree();
  if (lowest_ < pager_.page_count()) {
    const PageNumber page = lowest_;
    if (page < 2 || std::ranges::count(OwnPages(), page) > 0) {
      throw Error(ErrorKind::kDamaged, "The map of free pages offers one of its own pages");
    }
    SetBit(page, false);
    PageEdit edit = pager_.Edit(page);
    std::ranges::fill(edit.edit(), std::uint8_t{0});
    return edit;
  }
  while (!Covers(pager_.page_count())) Extend();
  SetBit(pager_.page_count(), false);
  return pager_.Append();
}

// Makes the map hold more pages; may take pages at the end of the file for that.
void PageSpace::Extend() {
  if (ReadMap().IsInline()) {
    if (!Lengthen()) MakeReferenced();
    return;
  }
  const std::size_t position = pager_.page_count() / kBitsPerPage;
  AddBitsPage(position);
}

// In steps of four bytes, as long as there is room.
bool PageSpace::Lengthen() {
  const Map map = ReadMap();
  const std::vector<std::uint8_t> old(map.row.begin(), map.row.end());
  const PageNumber end = map.start() + static_cast<PageNumber>((old.size() - kBitsAt) * 8);
  const PageEdit edit = pager_.Edit(kMapPage);
  DataPageEdit data(edit.edit());
  if (data.view().ComputeFree() < 4) return false;
  const MutableBytes longer = data.Resize(kMapSlot, old.size() + 4);
  Copy(longer, 0, old);
  MarkBeyond(longer.subspan(old.size()), end, pager_.page_count());
  return true;
}

void PageSpace::MakeReferenced() {
  const PageNumber count = pager_.page_count();
  std::vector<PageNumber> free;
  for (PageNumber page = 0; page < count; ++page) {
    if (IsFree(page)) free.push_back(page);
  }
  {
    const std::size_t size = std::min(ReadMap().row.size(), kFreshMapSize);
    const PageEdit edit = pager_.Edit(kMapPage);
    const MutableBytes row = DataPageEdit(edit.edit()).Resize(kMapSlot, size);
    std::ranges::fill(row, std::uint8_t{0});
    row[0] = 1;
  }
  for (PageNumber first = 0; first < pager_.page_count(); first += kBitsPerPage) {
    AddBitsPage(first / kBitsPerPage);
  }
  for (const PageNumber page : free) SetBit(page, true);
}

// The page for the bits is appended: it lies in the part of the file that it describes or behind that, and as
// a page that exists then it is not free.
void PageSpace::AddBitsPage(std::size_t position) {
  if (position >= ReadMap().pointers()) {
    throw Error(ErrorKind::kFull, "The database has as many pages as its map of free pages can hold");
  }
  const PageEdit bits = pager_.Append();
  Store16(bits.edit(), 0, PageMark(PageType::kUsageMap));
  MarkBeyond(bits.edit().subspan(kPageBitsAt), static_cast<PageNumber>(position) * kBitsPerPage,
             pager_.page_count());
  const PageEdit edit = pager_.Edit(kMapPage);
  Store32(edit.edit(), ReadMap().slot.start + PointerAt(position), bits.number());
}

void PageSpace::SetBit(PageNumber page, bool free) {
  const std::optional<Stretch> stretch = StretchFrom(page);
  if (!stretch || !stretch->Holds(page)) {
    throw Error(ErrorKind::kDamaged, "A page is not in the map of free pages");
  }
  const PageEdit edit = pager_.Edit(stretch->page.number());
  SetPageBit(edit.edit().subspan(stretch->at, stretch->size), page - stretch->first, free);
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
  MarkBeyond(MutableBytes(row).subspan(kBitsAt), 0, static_cast<PageNumber>(used));
  DataPageEdit data(page);
  data.Add(row, 0);
  row.fill(0);
  data.Add(row, 0);
}

}  // namespace kestro::jet
