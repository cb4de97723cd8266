#include "jet/index_cursor.h"

#include <limits>

#include "jet/error.h"
#include "jet/index_key.h"
#include "jet/table.h"

namespace kestro::jet {
namespace {

using Limits = std::numeric_limits<std::int32_t>;

}  // namespace

IndexCursor::IndexCursor(const Table& table, std::size_t index, const IntegerRange& range)
    : table_(&table), row_(table.MakeRowView()) {
  table.CheckAlive();
  if (index >= table.indexes().size() || !table.indexes()[index].searchable) {
    throw Error(ErrorKind::kMisuse, "The index cannot be searched");
  }
  real_ = table.indexes()[index].real;
  SetRange(range);
}

void IndexCursor::SetRange(const IntegerRange& range) {
  if (!range.first && !range.last) return;
  const std::int64_t first = range.first.value_or(Limits::min());
  const std::int64_t last = range.last.value_or(Limits::max());
  ended_ = first > last || first > Limits::max() || last < Limits::min();
  if (ended_) return;
  IndexKey key;
  if (first >= Limits::min()) {
    AppendInt32Key(static_cast<std::int32_t>(first), key);
  } else {
    key.Append(kKeyValue);
  }
  Copy(entry_, 0, key.bytes());
  entry_size_ = key.size();
  if (last > Limits::max()) return;
  key.Clear();
  AppendInt32Key(static_cast<std::int32_t>(last), key);
  Copy(last_, 0, key.bytes());
  last_size_ = key.size();
}

// Where the entry behind the current one is, also after changes.
IndexTree::Place IndexCursor::NextPlace(const IndexTree& tree) {
  const Pager& pager = table_->storage().pager;
  if (started_ && changes_ == pager.changes()) return {leaf_, next_start_};
  table_->CheckAlive();
  changes_ = pager.changes();
  IndexTree::Place place = tree.Find(entry());
  if (!started_ || !tree.Settle(place)) return place;
  const IndexPage leaf(place.leaf.bytes());
  const std::size_t end = leaf.End(place.start);
  if (leaf.CompareEntry(place.start, end, entry()) == 0) place.start = end;
  return place;
}

bool IndexCursor::Next() {
  row_read_ = false;
  if (ended_) return false;
  const TableDefinition& definition = table_->definition();
  const IndexTree tree(table_->storage(), definition, definition.real_indexes[real_]);
  IndexTree::Place place = NextPlace(tree);
  ended_ = !tree.Settle(place);
  if (ended_) return false;
  const IndexPage leaf(place.leaf.bytes());
  const std::size_t end = leaf.End(place.start);
  Take(leaf, place.start, end);
  next_start_ = end;
  leaf_ = std::move(place.leaf);
  const ByteSpan found = entry().first(entry_size_ - kRowBytesInKey);
  ended_ = last_size_ > 0 && Compare(found, ByteSpan(last_).first(last_size_)) > 0;
  return !ended_;
}

void IndexCursor::Take(const IndexPage& leaf, std::size_t start, std::size_t end) {
  IndexKey key;
  leaf.CopyEntry(start, end, key);
  // A circle of leaves would go on for ever.
  const bool ascending = !started_ || Compare(key.bytes(), entry()) > 0;
  if (key.size() > kMostEntryBytes || !ascending)
    throw Error(ErrorKind::kDamaged, "An index is not in order");
  Copy(entry_, 0, key.bytes());
  entry_size_ = key.size();
  started_ = true;
}

RowId IndexCursor::id() const {
  const std::size_t at = entry_size_ - kRowBytesInKey;
  return {LoadBig24(entry_, at), Load8(entry_, at + 3)};
}

std::optional<std::int32_t> IndexCursor::key() const {
  if (entry_[0] != kKeyValue || entry_size_ != kMostEntryBytes) return std::nullopt;
  return static_cast<std::int32_t>(LoadBig32(entry_, 1) ^ 0x80000000U);
}

const RowView& IndexCursor::row() {
  if (!row_read_) {
    if (!table_->Read(id(), row_))
      throw Error(ErrorKind::kDamaged, "An index names a row that does not exist");
    row_read_ = true;
  }
  return row_;
}

}  // namespace kestro::jet
