#include "contacts/keyset_recordset.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <utility>

#include "base/runtime_error.h"
#include "base/text.h"
#include "contacts/database_session.h"

namespace kestro::contacts {
namespace {

[[noreturn]] void Raise(const char* description) {
  throw base::RuntimeError(base::kDatabaseError, description);
}

/// A row as long as the database has not given it.
KeysetPages::Row EmptyRow(std::int64_t key, std::size_t field_count) {
  KeysetPages::Row row{std::vector<std::string>(field_count), false};
  row.texts.front() = std::to_string(key);
  return row;
}

}  // namespace

KeysetRecordset::KeysetRecordset(ports::Database& database, std::string_view connection_string,
                                 KeysetQuery query)
    : database_(database),
      connection_string_(connection_string),
      query_(std::move(query)),
      rows_statement_(RowsStatement(query_, KeysetPages::kPageRows)),
      keys_(CollectKeys({query_.first_order})) {}

KeysetRecordset::Keys KeysetRecordset::CollectKeys(const SortOrder& order) const {
  DatabaseSession session(database_, connection_string_);
  const std::vector<DatabaseSession::Value> values(query_.values.begin(), query_.values.end());
  const auto rows = session.Query(KeysStatement(query_, order), values);
  Keys keys;
  for (; !rows->AtEnd(); rows->MoveNext()) keys.push_back(rows->Integer(0));
  keys.shrink_to_fit();
  return keys;
}

KeysetPages::Page KeysetRecordset::ReadPage(std::size_t first) const {
  const auto keys =
      std::span(keys_).subspan(first).first(std::min(KeysetPages::kPageRows, keys_.size() - first));
  KeysetPages::Page page;
  for (const auto key : keys) page.push_back(EmptyRow(key, query_.fields.size()));
  std::vector<DatabaseSession::Value> values(keys.begin(), keys.end());
  values.resize(KeysetPages::kPageRows, keys.back());  // one text for every page: it is prepared once
  DatabaseSession session(database_, connection_string_);
  for (const auto rows = session.Query(rows_statement_, values); !rows->AtEnd(); rows->MoveNext()) {
    const auto found = std::ranges::find(keys, rows->Integer(0));
    if (found == keys.end()) continue;
    auto& row = page[static_cast<std::size_t>(found - keys.begin())];
    for (std::size_t i = 1; i < row.texts.size(); ++i) row.texts[i] = rows->Text(static_cast<int>(i));
    row.exists = true;
  }
  return page;
}

const KeysetPages::Row& KeysetRecordset::CurrentRow() const {
  return pages_.At(position_, [this](std::size_t first) { return ReadPage(first); });
}

void KeysetRecordset::RequireOpen() const {
  if (closed_) Raise("The recordset is closed.");
}

void KeysetRecordset::RequireCurrentRow(int index) const {
  if (index < 0 || index >= FieldCount()) base::RaiseSubscriptOutOfRange();
  if (AtEnd()) Raise("The recordset is at its end: there is no current row.");
}

bool KeysetRecordset::AtEnd() const {
  RequireOpen();
  return position_ == keys_.size();
}

void KeysetRecordset::MoveNext() {
  if (AtEnd()) Raise("The recordset is at its end already.");
  ++position_;
}

std::int64_t KeysetRecordset::RecordCount() const {
  RequireOpen();
  return static_cast<std::int64_t>(keys_.size());
}

std::int64_t KeysetRecordset::Position() const {
  RequireOpen();
  return static_cast<std::int64_t>(position_);
}

void KeysetRecordset::MoveTo(std::int64_t row) {
  if (row < 0 || row >= RecordCount()) base::RaiseSubscriptOutOfRange();
  position_ = static_cast<std::size_t>(row);
}

int KeysetRecordset::FieldCount() const {
  RequireOpen();
  return static_cast<int>(query_.fields.size());
}

std::string_view KeysetRecordset::FieldName(int index) const {
  if (index < 0 || index >= FieldCount()) base::RaiseSubscriptOutOfRange();
  return query_.fields[static_cast<std::size_t>(index)];
}

ports::DatabaseValue KeysetRecordset::Field(int index) const {
  RequireCurrentRow(index);
  if (index == 0) return keys_[position_];
  const auto& row = CurrentRow();
  if (!row.exists) return ports::Null{};
  return row.texts[static_cast<std::size_t>(index)];
}

std::string_view KeysetRecordset::Text(int index) const {
  RequireCurrentRow(index);
  return CurrentRow().texts[static_cast<std::size_t>(index)];
}

std::int64_t KeysetRecordset::Integer(int index) const {
  RequireCurrentRow(index);
  if (index == 0) return keys_[position_];
  const std::string_view text = CurrentRow().texts[static_cast<std::size_t>(index)];
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

int KeysetRecordset::FieldIndex(std::string_view name) const {
  for (int index = 0; index < FieldCount(); ++index) {
    if (base::EqualIgnoringCase(FieldName(index), name)) return index;
  }
  base::RaiseSubscriptOutOfRange();
}

std::string KeysetRecordset::Sort() const {
  RequireOpen();
  return sort_;
}

void KeysetRecordset::SetSort(std::string_view sort) {
  RequireOpen();
  keys_ = CollectKeys(sort.empty() ? SortOrder{query_.first_order} : ParseSortOrder(sort, query_));
  sort_ = sort;
  position_ = 0;
  pages_.Clear();
}

void KeysetRecordset::Close() {
  RequireOpen();
  closed_ = true;
  keys_ = {};
  pages_.Clear();
}

}  // namespace kestro::contacts
