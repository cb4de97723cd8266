#include "jet/cursor.h"

#include <optional>
#include <utility>

#include "jet/data_page.h"
#include "jet/error.h"
#include "jet/row_store.h"
#include "jet/table.h"
#include "jet/usage_map.h"

namespace kestro::jet {

Cursor::Cursor(const Table& table)
    : table_(&table), row_(table.MakeRowView()), changes_(table.storage().pager.changes()) {
  table.CheckAlive();
}

bool Cursor::Next() {
  if (ended_) return false;
  Pager& pager = table_->storage().pager;
  if (changes_ != pager.changes()) Refresh();
  while (!page_ || !NextInPage()) {
    if (!NextPage()) {
      ended_ = true;
      return false;
    }
  }
  return true;
}

// Something was changed meanwhile: the page may not belong to the table any more.
void Cursor::Refresh() {
  table_->CheckAlive();
  Pager& pager = table_->storage().pager;
  changes_ = pager.changes();
  if (!page_) return;
  if (UsageMap(pager, table_->definition().owned).Contains(number_)) {
    page_ = pager.Read(number_);
  } else {
    page_ = PageRef();
  }
}

bool Cursor::NextPage() {
  Pager& pager = table_->storage().pager;
  const std::optional<PageNumber> next = UsageMap(pager, table_->definition().owned).Next(number_ + 1);
  if (!next) return false;
  number_ = *next;
  slot_ = 0;
  page_ = pager.Read(number_);
  if (!page_.Is(PageType::kData) || DataPage(page_.bytes()).owner() != table_->definition().page) {
    throw Error(ErrorKind::kDamaged, "A usage map names a page of another table");
  }
  return true;
}

bool Cursor::NextInPage() {
  const DataPage data(page_.bytes());
  const std::size_t count = data.slot_count();
  if (count > kMostSlots) throw Error(ErrorKind::kDamaged, "A data page has too many rows");
  while (slot_ < count) {
    const RowId id{number_, static_cast<std::uint8_t>(slot_)};
    const Slot slot = data.slot(slot_++);
    if ((slot.flags & kSlotTarget) != 0) continue;
    if (slot.flags == kSlotMoved) {
      StoredRow moved = FollowMoved(table_->storage().pager, table_->definition(), data.row(slot));
      row_.Attach(id, std::move(moved.page), moved.bytes);
    } else {
      row_.Attach(id, page_, data.row(slot));
    }
    return true;
  }
  return false;
}

}  // namespace kestro::jet
