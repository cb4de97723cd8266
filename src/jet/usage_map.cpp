#include "jet/usage_map.h"

#include <algorithm>

#include "jet/data_page.h"
#include "jet/error.h"
#include "jet/page_bits.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kInlineBitsAt = 5;

[[noreturn]] void ThrowDamaged() { throw Error(ErrorKind::kDamaged, "A usage map has an unknown form"); }

}  // namespace

UsageMap::Row UsageMap::ReadRow() const {
  Row row;
  row.page = pager_->Read(where_.page);
  if (!row.page.Is(PageType::kData)) ThrowDamaged();
  row.bytes = DataPage(row.page.bytes()).row(where_.slot);
  if (row.bytes.size() < kInlineBitsAt || row.bytes[0] > 1) ThrowDamaged();
  if (row.bytes[0] == 0 && Load32(row.bytes, 1) >= kMostPages) ThrowDamaged();
  return row;
}

std::optional<PageNumber> UsageMap::Next(PageNumber from) const {
  if (where_.IsNone()) return std::nullopt;
  const Row row = ReadRow();
  const std::optional<PageNumber> found = row.IsInline() ? NextInline(row, from) : NextReferenced(row, from);
  // A bit behind the end of the file is no page.
  return found && *found < pager_->page_count() ? found : std::nullopt;
}

std::optional<PageNumber> UsageMap::NextInline(const Row& row, PageNumber from) {
  const PageNumber start = Load32(row.bytes, 1);
  const auto bit = FindPageBit(row.bytes.subspan(kInlineBitsAt), from > start ? from - start : 0);
  return bit ? std::optional(start + *bit) : std::nullopt;
}

std::optional<PageNumber> UsageMap::NextReferenced(const Row& row, PageNumber from) const {
  for (std::size_t k = from / kBitsPerPage; 1 + 4 * k + 4 <= row.bytes.size(); ++k) {
    const PageNumber base = static_cast<PageNumber>(k) * kBitsPerPage;
    const PageNumber bits_page = Load32(row.bytes, 1 + 4 * k);
    if (base >= kMostPages) break;
    if (bits_page == 0) continue;
    const PageRef bits = ReadBitsPage(*pager_, bits_page);
    if (const auto bit = FindPageBit(bits.bytes().subspan(kPageBitsAt), from > base ? from - base : 0)) {
      return base + *bit;
    }
  }
  return std::nullopt;
}

bool UsageMap::Contains(PageNumber page) const { return Next(page) == page; }

std::vector<PageNumber> UsageMap::All() const {
  std::vector<PageNumber> pages;
  for (std::optional<PageNumber> page = Next(0); page; page = Next(*page + 1)) pages.push_back(*page);
  return pages;
}

std::vector<PageNumber> UsageMap::OwnPages() const {
  std::vector<PageNumber> pages;
  if (where_.IsNone()) return pages;
  const Row row = ReadRow();
  if (row.IsInline()) return pages;
  for (std::size_t at = 1; at + 4 <= row.bytes.size(); at += 4) {
    if (const PageNumber page = Load32(row.bytes, at); page != 0) pages.push_back(page);
  }
  return pages;
}

MutableBytes UsageMap::EditRow(const PageEdit& edit) const {
  const Slot slot = DataPage(edit.bytes()).slot(where_.slot);
  return edit.edit().subspan(slot.start, slot.size());
}

void UsageMap::Add(PageSpace& space, PageNumber page) {
  if (where_.IsNone()) throw Error(ErrorKind::kMisuse, "There is no map to enter a page in");
  const Row row = ReadRow();
  if (row.IsInline()) {
    if (AddInline(row, page)) return;
    MakeReferenced(space);
  }
  AddReferenced(space, page);
}

bool UsageMap::AddInline(const Row& row, PageNumber page) {
  const PageNumber start = Load32(row.bytes, 1);
  const std::size_t bits = (row.bytes.size() - kInlineBitsAt) * 8;
  if (page < start || page - start >= bits) return false;
  const PageEdit edit = pager_->Edit(where_.page);
  SetPageBit(EditRow(edit).subspan(kInlineBitsAt), page - start, true);
  return true;
}

void UsageMap::MakeReferenced(PageSpace& space) {
  const std::vector<PageNumber> pages = All();
  {
    const PageEdit edit = pager_->Edit(where_.page);
    const MutableBytes row = EditRow(edit);
    std::ranges::fill(row, std::uint8_t{0});
    row[0] = 1;
  }
  for (const PageNumber page : pages) AddReferenced(space, page);
}

void UsageMap::AddReferenced(PageSpace& space, PageNumber page) {
  const std::size_t at = 1 + 4 * (page / kBitsPerPage);
  PageNumber bits_page = 0;
  {
    const Row row = ReadRow();
    if (at + 4 > row.bytes.size()) throw Error(ErrorKind::kFull, "A usage map cannot hold more pages");
    bits_page = Load32(row.bytes, at);
  }
  if (bits_page == 0) {
    const PageEdit fresh = space.Allocate();
    Store16(fresh.edit(), 0, PageMark(PageType::kUsageMap));
    bits_page = fresh.number();
    const PageEdit edit = pager_->Edit(where_.page);
    Store32(EditRow(edit), at, bits_page);
  }
  (void)ReadBitsPage(*pager_, bits_page);
  const PageEdit bits = pager_->Edit(bits_page);
  SetPageBit(bits.edit().subspan(kPageBitsAt), page % kBitsPerPage, true);
}

void UsageMap::Remove(PageNumber page) {
  if (!Contains(page)) return;
  const Row row = ReadRow();
  if (row.IsInline()) {
    const PageEdit edit = pager_->Edit(where_.page);
    SetPageBit(EditRow(edit).subspan(kInlineBitsAt), page - Load32(row.bytes, 1), false);
    return;
  }
  const PageEdit bits = pager_->Edit(Load32(row.bytes, 1 + 4 * (page / kBitsPerPage)));
  SetPageBit(bits.edit().subspan(kPageBitsAt), page % kBitsPerPage, false);
}

}  // namespace kestro::jet
