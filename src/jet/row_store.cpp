#include "jet/row_store.h"

#include "jet/error.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kPointerSize = 4;
constexpr int kMostPagesTried = 8;
// A page with less room than this is not worth being looked at again.
constexpr std::size_t kHardlyRoom = 256;

[[noreturn]] void ThrowDamaged(const char* what) { throw Error(ErrorKind::kDamaged, what); }

bool IsPageOf(const PageRef& page, const TableDefinition& definition) {
  return page.Is(PageType::kData) && DataPage(page.bytes()).owner() == definition.page;
}

PageEdit EditPage(Pager& pager, const TableDefinition& definition, PageNumber number) {
  if (!IsPageOf(pager.Read(number), definition)) ThrowDamaged("A data page belongs to another table");
  return pager.Edit(number);
}

}  // namespace

StoredRow FollowMoved(Pager& pager, const TableDefinition& definition, ByteSpan slot_bytes) {
  StoredRow row;
  row.target = DataPointer::FromStored(Load32(slot_bytes, 0));
  row.page = pager.Read(row.target.page);
  if (!IsPageOf(row.page, definition)) ThrowDamaged("A moved row leads to a page of another table");
  const DataPage data(row.page.bytes());
  const Slot slot = data.slot(row.target.slot);
  // A target cannot be moved on: both flags together would mean deleted.
  if (slot.flags != kSlotTarget) ThrowDamaged("A moved row leads to no row");
  row.bytes = data.row(slot);
  return row;
}

std::optional<StoredRow> FindStoredRow(Pager& pager, const TableDefinition& definition, RowId id) {
  if (id.page >= pager.page_count()) return std::nullopt;
  StoredRow row;
  row.page = pager.Read(id.page);
  if (!IsPageOf(row.page, definition)) return std::nullopt;
  const DataPage data(row.page.bytes());
  if (id.slot >= data.slot_count()) return std::nullopt;
  const Slot slot = data.slot(id.slot);
  if ((slot.flags & kSlotTarget) != 0) return std::nullopt;
  if (slot.flags == kSlotMoved) return FollowMoved(pager, definition, data.row(slot));
  row.bytes = data.row(slot);
  return row;
}

bool RowStore::Fits(PageNumber number, std::size_t size) {
  const PageRef page = storage_.pager.Read(number);
  if (!IsPageOf(page, definition_)) ThrowDamaged("A usage map names a page of another table");
  const DataPage data(page.bytes());
  if (DataPageEdit::HasRoom(data, size)) return true;
  if (data.ComputeFree() < kHardlyRoom) UsageMap(storage_.pager, definition_.free).Remove(number);
  return false;
}

// Goes on behind the page used last, so that pages with room are used in turn.
std::optional<PageNumber> RowStore::FindFreePage(std::size_t size) {
  const UsageMap owned(storage_.pager, definition_.owned);
  const UsageMap free(storage_.pager, definition_.free);
  PageNumber from = hints_.rows + 1;
  for (int tries = 0; tries < kMostPagesTried; ++tries) {
    std::optional<PageNumber> page = free.Next(from);
    if (!page && from != 0) page = free.Next(0);
    if (!page) return std::nullopt;
    if (owned.Contains(*page) && Fits(*page, size)) return page;
    from = *page + 1;
  }
  return std::nullopt;
}

PageNumber RowStore::FindPage(std::size_t size) {
  const PageNumber hint = hints_.rows;
  if (hint != 0 && UsageMap(storage_.pager, definition_.owned).Contains(hint) && Fits(hint, size))
    return hint;
  const std::optional<PageNumber> page = FindFreePage(size);
  hints_.rows = page ? *page : NewPage();
  return hints_.rows;
}

PageNumber RowStore::NewPage() {
  PageNumber number = 0;
  {
    const PageEdit fresh = storage_.space.Allocate();
    number = fresh.number();
    DataPageEdit::Format(fresh.edit(), definition_.page);
  }
  UsageMap(storage_.pager, definition_.owned).Add(storage_.space, number);
  UsageMap(storage_.pager, definition_.free).Add(storage_.space, number);
  return number;
}

RowId RowStore::AddWithFlags(ByteSpan row, std::uint16_t flags) {
  const PageEdit page = storage_.pager.Edit(FindPage(row.size()));
  const std::size_t slot = DataPageEdit(page.edit()).Add(row, flags);
  return {page.number(), static_cast<std::uint8_t>(slot)};
}

bool RowStore::ReplaceInPlace(RowId place, ByteSpan row) {
  const PageEdit page = EditPage(storage_.pager, definition_, place.page);
  DataPageEdit data(page.edit());
  const Slot slot = data.view().slot(place.slot);
  if (row.size() > slot.size() + data.view().ComputeFree()) return false;
  Copy(data.Resize(place.slot, row.size()), 0, row);
  if (row.size() < slot.size()) NoteRoom(place.page);
  return true;
}

void RowStore::Replace(RowId id, ByteSpan row) {
  const std::optional<StoredRow> old = FindStoredRow(storage_.pager, definition_, id);
  if (!old) ThrowDamaged("A row to be replaced is gone");
  if (old->target.IsNone()) {
    if (!ReplaceInPlace(id, row)) PointTo(id, AddWithFlags(row, kSlotTarget));
    return;
  }
  const RowId target{old->target.page, old->target.slot};
  if (ReplaceInPlace(target, row)) return;
  RemoveSlot(target);
  PointTo(id, AddWithFlags(row, kSlotTarget));
}

void RowStore::PointTo(RowId header, RowId target) {
  const PageEdit page = EditPage(storage_.pager, definition_, header.page);
  DataPageEdit data(page.edit());
  Store32(data.Resize(header.slot, kPointerSize), 0, DataPointer{target.page, target.slot}.Stored());
  data.SetFlags(header.slot, kSlotMoved);
  NoteRoom(header.page);
}

void RowStore::NoteRoom(PageNumber page) {
  UsageMap free(storage_.pager, definition_.free);
  if (!free.Contains(page)) free.Add(storage_.space, page);
}

void RowStore::RemoveSlot(RowId place) {
  const PageEdit page = EditPage(storage_.pager, definition_, place.page);
  DataPageEdit data(page.edit());
  data.Remove(place.slot);
  if (!data.view().IsEmpty()) {
    NoteRoom(place.page);
    return;
  }
  UsageMap owned(storage_.pager, definition_.owned);
  if (!owned.Contains(place.page)) ThrowDamaged("A data page is not in the map of its table");
  owned.Remove(place.page);
  UsageMap(storage_.pager, definition_.free).Remove(place.page);
  storage_.space.Free(place.page);
}

void RowStore::Remove(RowId id) {
  const std::optional<StoredRow> row = FindStoredRow(storage_.pager, definition_, id);
  if (!row) ThrowDamaged("A row to be removed is gone");
  const DataPointer target = row->target;
  if (!target.IsNone()) RemoveSlot({target.page, target.slot});
  RemoveSlot(id);
}

}  // namespace kestro::jet
