#include "jet/table.h"

#include <algorithm>
#include <utility>

#include "jet/error.h"
#include "jet/index_key.h"
#include "jet/row_store.h"
#include "jet/stored_text.h"

namespace kestro::jet {
namespace {

char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 0x20) : character;
}

bool EqualNames(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, LowerAscii, LowerAscii);
}

template <typename Named>
std::optional<std::size_t> FindNamed(const std::vector<Named>& all, std::string_view name) {
  const auto found = std::ranges::find_if(all, [&](const Named& one) { return EqualNames(one.name, name); });
  if (found == all.end()) return std::nullopt;
  return static_cast<std::size_t>(found - all.begin());
}

}  // namespace

Table::Table(Storage& storage, std::string name, TableDefinition definition)
    : storage_(&storage),
      name_(std::move(name)),
      definition_(std::move(definition)),
      encoder_(definition_),
      keys_(definition_.real_indexes.size()),
      old_keys_(definition_.real_indexes.size()) {}

std::optional<std::size_t> Table::FindColumn(std::string_view name) const {
  return FindNamed(definition_.columns, name);
}

std::optional<std::size_t> Table::FindIndex(std::string_view name) const {
  return FindNamed(definition_.indexes, name);
}

std::optional<std::size_t> Table::SearchablePrimaryKey() const {
  for (std::size_t i = 0; i < definition_.indexes.size(); ++i) {
    if (definition_.indexes[i].primary && definition_.indexes[i].searchable) return i;
  }
  return std::nullopt;
}

void Table::CheckAlive() const {
  if (dropped_) throw Error(ErrorKind::kMisuse, "The table \"" + name_ + "\" does not exist any more");
}

std::int64_t Table::RowCount() const {
  CheckAlive();
  return Load32(storage_->pager.Read(definition_.page).bytes(), kRowCountAt);
}

const std::string& Table::ReadOnlyReason() const {
  if (!read_only_reason_) read_only_reason_ = FindReadOnlyReason();
  return *read_only_reason_;
}

std::string Table::FindReadOnlyReason() const {
  CheckAlive();
  if (!storage_->read_only_reason.empty()) return storage_->read_only_reason;
  if (definition_.system && !system_changes_) return "It is a system table";
  if (!definition_.read_only_reason.empty()) return definition_.read_only_reason;
  // Texts whose place in the order is not known cannot be found again in their index.
  IndexKey key;
  for (const RealIndex& index : definition_.real_indexes) {
    if (std::ranges::none_of(index.columns,
                             [&](const IndexColumn& part) { return columns()[part.column].IsText(); })) {
      continue;
    }
    for (Cursor cursor = Scan(); cursor.Next();) {
      if (MakeKey(definition_, index, cursor.row().layout(), key) == KeyResult::kUnsupported) {
        return "A text in an index has characters whose sort order is not known";
      }
    }
  }
  return {};
}

void Table::CheckWritable() const {
  CheckAlive();
  if (!ReadOnlyReason().empty()) {
    throw Error(ErrorKind::kReadOnly, "The table \"" + name_ + "\" cannot be changed: " + ReadOnlyReason());
  }
  storage_->pager.RequireSound();
}

IndexCursor Table::Search(std::size_t index, const IntegerRange& range) const {
  return {*this, index, range};
}

bool Table::Read(RowId id, RowView& row) const {
  CheckAlive();
  std::optional<StoredRow> stored = FindStoredRow(storage_->pager, definition_, id);
  if (!stored) return false;
  row.Attach(id, std::move(stored->page), stored->bytes);
  return true;
}

}  // namespace kestro::jet
