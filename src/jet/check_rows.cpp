#include "jet/check_rows.h"

#include <algorithm>
#include <set>

#include "jet/check_pages.h"
#include "jet/data_page.h"
#include "jet/index_key.h"
#include "jet/long_value.h"
#include "jet/row_store.h"
#include "jet/row_view.h"

namespace kestro::jet {
namespace {

class RowChecker {
 public:
  RowChecker(CheckReport& report, Pager& pager, const std::string& table, const TableDefinition& definition)
      : report_(report),
        pager_(pager),
        table_(table),
        definition_(definition),
        row_(pager, definition),
        expected_(definition.real_indexes.size()) {}

  std::vector<ExpectedEntries> Run() {
    const std::vector<PageNumber> pages =
        CheckDataMaps(report_, pager_, table_, definition_.owned, definition_.free, definition_.page);
    for (const PageNumber page : pages) CheckPage(page);
    if (targets_ != followed_) report_.Find(table_ + ": moved rows and their targets do not belong together");
    CheckLongPages();
    CheckNumbering();
    return std::move(expected_);
  }

 private:
  void CheckPage(PageNumber number) {
    const PageRef page = pager_.Read(number);
    const DataPage data(page.bytes());
    if (Load32(page.bytes(), 8) != 0) report_.Find(OnPage(table_, number) + ": the word at 8 is not 0");
    for (std::size_t i = 0; i < std::min(data.slot_count(), kMostSlots); ++i) {
      const RowId id{number, static_cast<std::uint8_t>(i)};
      const Slot slot = data.slot(i);
      if (slot.IsDeleted()) continue;
      if (slot.flags == kSlotTarget) {
        targets_.insert(DataPointer{number, id.slot}.Stored());
        continue;
      }
      const std::string where = OnPage(table_, number) + ", row " + std::to_string(i);
      report_.Try(where, [&] { CheckRow(where, id); });
    }
  }

  void CheckRow(const std::string& where, RowId id) {
    std::optional<StoredRow> stored = FindStoredRow(pager_, definition_, id);
    if (!stored) return;
    if (!stored->target.IsNone() && !followed_.insert(stored->target.Stored()).second) {
      report_.Find(where + ": moved to the place of another row");
    }
    row_.Attach(id, stored->page, stored->bytes);
    ++report_.result().rows;
    row_.layout().Check();
    if (!row_.layout().SpareBitsAreZero()) report_.Find(where + ": spare null bits are set");
    for (std::size_t i = 0; i < definition_.columns.size(); ++i) CheckColumn(i);
    for (std::size_t i = 0; i < expected_.size(); ++i) ExpectEntry(i, id);
  }

  void CheckColumn(std::size_t position) {
    const std::optional<ByteSpan> raw = row_.Raw(position);
    const Column& column = definition_.columns[position];
    if (column.auto_number) highest_ = std::max(highest_, row_.Integer(position).value_or(0));
    if (!raw || !column.IsLong()) {
      if (raw) (void)row_.Get(position);
      return;
    }
    for (const DataPointer where : LongValueRows(pager_, *raw)) {
      if (!long_rows_.insert(where.Stored()).second) {
        report_.Find(table_ + ": two values of \"" + column.name + "\" share their bytes");
      }
    }
  }

  void ExpectEntry(std::size_t index, RowId id) {
    const RealIndex& real = definition_.real_indexes[index];
    IndexKey key;
    const KeyResult result = MakeKey(definition_, real, row_.layout(), key);
    if (result == KeyResult::kUnsupported) {
      expected_[index].known = false;
      return;
    }
    if (result == KeyResult::kAllNull && real.IgnoresNulls()) return;
    key.AppendRow(id);
    expected_[index].entries.emplace_back(key.bytes().begin(), key.bytes().end());
  }

  // Every live row on these pages belongs to a value: nothing leaks.
  void CheckLongPages() {
    std::size_t live = 0;
    for (const LongColumnMaps& maps : definition_.long_columns) {
      const std::string who = table_ + "." + definition_.columns[maps.column].name;
      for (const PageNumber number :
           CheckDataMaps(report_, pager_, who, maps.owned, maps.free, kLongValueOwner)) {
        const PageRef page = pager_.Read(number);
        const DataPage data(page.bytes());
        for (std::size_t i = 0; i < std::min(data.slot_count(), kMostSlots); ++i) {
          if (data.slot(i).flags != 0) continue;
          ++live;
          if (!long_rows_.contains(DataPointer{number, static_cast<std::uint8_t>(i)}.Stored())) {
            report_.Find(OnPage(who, number) + ": a value belongs to no row");
          }
        }
      }
    }
    if (live != long_rows_.size()) report_.Find(table_ + ": long values lie outside the pages for them");
  }

  void CheckNumbering() {
    const auto last = static_cast<std::int32_t>(Load32(pager_.Read(definition_.page).bytes(), kAutoNumberAt));
    if (highest_ > last) report_.Find(table_ + ": the numbering is behind the numbers in use");
  }

  CheckReport& report_;
  Pager& pager_;
  const std::string& table_;
  const TableDefinition& definition_;
  RowView row_;
  std::vector<ExpectedEntries> expected_;
  std::set<std::uint32_t> targets_;
  std::set<std::uint32_t> followed_;
  std::set<std::uint32_t> long_rows_;
  std::int64_t highest_ = 0;
};

}  // namespace

std::vector<ExpectedEntries> CheckRows(CheckReport& report, Pager& pager, const std::string& table,
                                       const TableDefinition& definition) {
  return RowChecker(report, pager, table, definition).Run();
}

}  // namespace kestro::jet
