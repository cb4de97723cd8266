#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

#include "jet/error.h"
#include "jet/index_tree.h"
#include "jet/long_value.h"
#include "jet/row_store.h"
#include "jet/table.h"

namespace kestro::jet {
namespace {

// Counters on the definition page are unsigned; the numbering is signed.
void AddTo(const PageEdit& page, std::size_t offset, std::int32_t difference) {
  Store32(page.edit(), offset, Load32(page.bytes(), offset) + static_cast<std::uint32_t>(difference));
}

std::size_t DistinctKeysAt(std::size_t index) { return kIndexCountersAt + kIndexCountersSize * index + 4; }

bool HasEntry(const RealIndex& index, KeyResult result) {
  return result != KeyResult::kAllNull || !index.IgnoresNulls();
}

}  // namespace

std::optional<std::int32_t> Table::SetAutoNumber(std::span<const Value> values) {
  const std::optional<std::size_t> column = definition_.AutoNumberColumn();
  if (!column) return std::nullopt;
  const auto last =
      static_cast<std::int32_t>(Load32(storage_->pager.Read(definition_.page).bytes(), kAutoNumberAt));
  if (const auto* given = std::get_if<std::int64_t>(&values[*column])) {
    return static_cast<std::int32_t>(*given);
  }
  if (last == std::numeric_limits<std::int32_t>::max()) {
    throw Error(ErrorKind::kFull, "The table \"" + name_ + "\" has used its last number");
  }
  encoder_.Set(*column, Value(std::int64_t{last} + 1));
  return last + 1;
}

KeyResult Table::CheckedKey(std::size_t position, const RowLayout& row, IndexKey& key) const {
  const RealIndex& index = definition_.real_indexes[position];
  const KeyResult result = MakeKey(definition_, index, row, key);
  if (result == KeyResult::kUnsupported) {
    throw Error(ErrorKind::kValue, "A text for an index has characters whose sort order is not known");
  }
  if (result != KeyResult::kKey && index.IsRequired()) {
    throw Error(ErrorKind::kRequired, "An index of \"" + name_ + "\" needs a value in each of its columns");
  }
  return result;
}

void Table::CheckUnique(std::size_t position, KeyResult result, const IndexKey& key) const {
  const RealIndex& index = definition_.real_indexes[position];
  if (!index.IsUnique() || result != KeyResult::kKey) return;
  if (IndexTree(*storage_, definition_, index).HasKey(key.bytes())) {
    throw Error(ErrorKind::kDuplicate, "An index of \"" + name_ + "\" has this key already");
  }
}

void Table::StoreLongParts() {
  for (const RowEncoder::LongPart& part : encoder_.long_parts()) {
    const LongColumnMaps* maps = definition_.MapsOf(part.column);
    if (maps == nullptr) throw Error(ErrorKind::kDamaged, "A long column has no maps");
    LongValueStore(*storage_, *maps, hints_).Write(part.data, encoder_.place(part));
  }
}

void Table::RemoveLongValue(std::size_t column, ByteSpan stored) {
  const LongColumnMaps* maps = definition_.MapsOf(column);
  if (maps == nullptr) throw Error(ErrorKind::kDamaged, "A long column has no maps");
  LongValueStore(*storage_, *maps, hints_).Remove(stored);
}

// Returns whether the key is a new one.
bool Table::AddEntry(std::size_t position, IndexKey& key, RowId id) {
  const RealIndex& index = definition_.real_indexes[position];
  key.AppendRow(id);
  const bool alone = IndexTree(*storage_, definition_, index).Insert(key.bytes());
  return alone || index.IsUnique();
}

void Table::RemoveEntry(std::size_t position, IndexKey& key, RowId id) {
  key.AppendRow(id);
  IndexTree(*storage_, definition_, definition_.real_indexes[position]).Erase(key.bytes());
}

void Table::RaiseAutoNumber(std::optional<std::int32_t> number) {
  if (!number) return;
  const PageEdit page = storage_->pager.Edit(definition_.page);
  if (static_cast<std::int32_t>(Load32(page.bytes(), kAutoNumberAt)) < *number) {
    Store32(page.edit(), kAutoNumberAt, static_cast<std::uint32_t>(*number));
  }
}

InsertResult Table::Insert(std::span<const Value> values) {
  CheckWritable();
  if (values.size() != columns().size()) {
    throw Error(ErrorKind::kMisuse, "A row of \"" + name_ + "\" needs a value a column");
  }
  encoder_.Clear();
  const std::optional<std::size_t> numbered = definition_.AutoNumberColumn();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i != numbered || !std::holds_alternative<Null>(values[i])) encoder_.Set(i, values[i]);
  }
  InsertResult result;
  result.auto_number = SetAutoNumber(values);
  const ByteSpan row = encoder_.Build();
  const RowLayout layout(row, definition_.variable_count > 0);
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    keys_[i].result = CheckedKey(i, layout, keys_[i].key);
    CheckUnique(i, keys_[i].result, keys_[i].key);
  }

  ChangeGuard guard(storage_->pager);
  StoreLongParts();
  result.id = RowStore(*storage_, definition_, hints_).Add(row);
  const PageEdit page = storage_->pager.Edit(definition_.page);
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    if (!HasEntry(definition_.real_indexes[i], keys_[i].result)) continue;
    if (AddEntry(i, keys_[i].key, result.id)) AddTo(page, DistinctKeysAt(i), 1);
  }
  AddTo(page, kRowCountAt, 1);
  RaiseAutoNumber(result.auto_number);
  guard.Done();
  return result;
}

// The encoder gets the stored columns, then the new values. `old` must not be in the page cache.
void Table::EncodeUpdate(const RowLayout& old, std::span<const Assignment> assignments) {
  encoder_.Clear();
  for (std::size_t i = 0; i < columns().size(); ++i) encoder_.SetStored(i, old.Value(columns()[i]));
  for (const Assignment& assignment : assignments) {
    if (assignment.column >= columns().size()) throw Error(ErrorKind::kMisuse, "There is no such column");
    if (columns()[assignment.column].auto_number && std::holds_alternative<Null>(assignment.value)) {
      throw Error(ErrorKind::kRequired, "\"" + columns()[assignment.column].name + "\" must have a value");
    }
    encoder_.Set(assignment.column, assignment.value);
  }
}

void Table::Update(RowId id, std::span<const Assignment> assignments) {
  CheckWritable();
  std::array<std::uint8_t, kPageSize> copy{};
  ByteSpan stored;
  {
    const std::optional<StoredRow> found = FindStoredRow(storage_->pager, definition_, id);
    if (!found) throw Error(ErrorKind::kNotFound, "The row to be changed does not exist");
    Copy(copy, 0, found->bytes);
    stored = ByteSpan(copy).first(found->bytes.size());
  }
  const bool has_variable = definition_.variable_count > 0;
  const RowLayout old(stored, has_variable);
  EncodeUpdate(old, assignments);
  const ByteSpan row = encoder_.Build();
  const RowLayout layout(row, has_variable);
  for (std::size_t i = 0; i < keys_.size(); ++i) PrepareKeyChange(i, old, layout);

  ChangeGuard guard(storage_->pager);
  StoreLongParts();
  RowStore(*storage_, definition_, hints_).Replace(id, row);
  RemoveReplacedLongValues(old, assignments);
  for (std::size_t i = 0; i < keys_.size(); ++i) ChangeEntry(i, id);
  const std::optional<std::size_t> numbered = definition_.AutoNumberColumn();
  for (const Assignment& assignment : assignments) {
    if (assignment.column != numbered) continue;
    if (const auto* number = std::get_if<std::int64_t>(&assignment.value)) {
      RaiseAutoNumber(static_cast<std::int32_t>(*number));
    }
  }
  guard.Done();
}

void Table::PrepareKeyChange(std::size_t position, const RowLayout& old, const RowLayout& row) {
  KeyOfRow& before = old_keys_[position];
  KeyOfRow& after = keys_[position];
  before.result = MakeKey(definition_, definition_.real_indexes[position], old, before.key);
  if (before.result == KeyResult::kUnsupported)
    throw Error(ErrorKind::kReadOnly, "The row's key is not understood");
  after.result = CheckedKey(position, row, after.key);
  after.changed = Compare(before.key.bytes(), after.key.bytes()) != 0;
  if (after.changed) CheckUnique(position, after.result, after.key);
}

void Table::ChangeEntry(std::size_t position, RowId id) {
  if (!keys_[position].changed) return;
  const RealIndex& index = definition_.real_indexes[position];
  if (HasEntry(index, old_keys_[position].result)) RemoveEntry(position, old_keys_[position].key, id);
  if (!HasEntry(index, keys_[position].result)) return;
  if (AddEntry(position, keys_[position].key, id)) {
    AddTo(storage_->pager.Edit(definition_.page), DistinctKeysAt(position), 1);
  }
}

void Table::RemoveReplacedLongValues(const RowLayout& old, std::span<const Assignment> assignments) {
  for (std::size_t i = 0; i < columns().size(); ++i) {
    const bool replaced =
        columns()[i].IsLong() && std::ranges::any_of(assignments, [&](const Assignment& assignment) {
          return assignment.column == i;
        });
    if (!replaced) continue;
    if (const std::optional<ByteSpan> stored = old.Value(columns()[i])) RemoveLongValue(i, *stored);
  }
}

void Table::Delete(RowId id) {
  CheckWritable();
  std::array<std::uint8_t, kPageSize> copy{};
  ByteSpan stored;
  {
    const std::optional<StoredRow> found = FindStoredRow(storage_->pager, definition_, id);
    if (!found) throw Error(ErrorKind::kNotFound, "The row to be deleted does not exist");
    Copy(copy, 0, found->bytes);
    stored = ByteSpan(copy).first(found->bytes.size());
  }
  const RowLayout old(stored, definition_.variable_count > 0);
  for (std::size_t i = 0; i < old_keys_.size(); ++i) {
    old_keys_[i].result = MakeKey(definition_, definition_.real_indexes[i], old, old_keys_[i].key);
    if (old_keys_[i].result == KeyResult::kUnsupported) {
      throw Error(ErrorKind::kReadOnly, "The row's key is not understood");
    }
  }

  ChangeGuard guard(storage_->pager);
  for (std::size_t i = 0; i < old_keys_.size(); ++i) {
    if (HasEntry(definition_.real_indexes[i], old_keys_[i].result)) RemoveEntry(i, old_keys_[i].key, id);
  }
  for (std::size_t i = 0; i < columns().size(); ++i) {
    if (!columns()[i].IsLong()) continue;
    if (const std::optional<ByteSpan> value = old.Value(columns()[i])) RemoveLongValue(i, *value);
  }
  RowStore(*storage_, definition_, hints_).Remove(id);
  AddTo(storage_->pager.Edit(definition_.page), kRowCountAt, -1);
  guard.Done();
}

}  // namespace kestro::jet
