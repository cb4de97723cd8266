#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jet/column.h"
#include "jet/cursor.h"
#include "jet/index_cursor.h"
#include "jet/index_key.h"
#include "jet/row_encoder.h"
#include "jet/row_id.h"
#include "jet/row_layout.h"
#include "jet/row_view.h"
#include "jet/storage.h"
#include "jet/table_definition.h"
#include "jet/value.h"

namespace kestro::jet {

struct InsertResult {
  RowId id;
  std::optional<std::int32_t> auto_number;  // the value of the AutoNumber column, when there is one
};

/// A new value of one column.
struct Assignment {
  std::size_t column = 0;  // position in columns()
  Value value;
};

/// A table of an open database; comes from Database::OpenTable and must not outlive the database. Once the
/// table is dropped (or its creation rolled back) every call but name() throws Error (kMisuse).
///
/// Changes need a transaction (see Database) and a table that may be changed. One that is refused
/// (kDuplicate, kRequired, kValue, kReadOnly) leaves everything as it was; after any other failure the
/// transaction, or the innermost savepoint from before the change, can only be rolled back.
class Table {
 public:
  Table(Storage& storage, std::string name, TableDefinition definition);

  ~Table() = default;
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::vector<Column>& columns() const { return definition_.columns; }
  [[nodiscard]] const std::vector<Index>& indexes() const { return definition_.indexes; }

  /// Positions by name, upper and lower case ASCII letters alike.
  [[nodiscard]] std::optional<std::size_t> FindColumn(std::string_view name) const;
  [[nodiscard]] std::optional<std::size_t> FindIndex(std::string_view name) const;
  /// The primary key, when it is one that Search() can use.
  [[nodiscard]] std::optional<std::size_t> SearchablePrimaryKey() const;

  /// As kept in the file: right for tables changed by this engine only, otherwise nearly so.
  [[nodiscard]] std::int64_t RowCount() const;

  /// Empty when rows may be changed; otherwise why not, in words. With a text index, the first call reads the
  /// whole table.
  [[nodiscard]] const std::string& ReadOnlyReason() const;

  [[nodiscard]] Cursor Scan() const { return Cursor(*this); }

  /// `index` is a position in indexes(), of one that is searchable (else kMisuse).
  [[nodiscard]] IndexCursor Search(std::size_t index, const IntegerRange& range) const;

  /// Reads the row with this id; false when there is none.
  [[nodiscard]] bool Read(RowId id, RowView& row) const;
  [[nodiscard]] RowView MakeRowView() const { return {storage_->pager, definition_}; }

  /// One value a column, in the order of columns(). Null in the AutoNumber column takes the next number.
  InsertResult Insert(std::span<const Value> values);

  /// Columns that are not named keep their stored bytes. kNotFound when there is no such row.
  void Update(RowId id, std::span<const Assignment> assignments);

  void Delete(RowId id);

  // --- for the engine ---
  [[nodiscard]] const TableDefinition& definition() const { return definition_; }
  [[nodiscard]] Storage& storage() const { return *storage_; }
  void MarkDropped() { dropped_ = true; }
  void CheckAlive() const;
  /// System tables are changed by the catalogue only.
  void AllowSystemChanges() { system_changes_ = true; }

 private:
  struct KeyOfRow {
    IndexKey key;
    KeyResult result = KeyResult::kKey;
    bool changed = false;
  };

  void CheckWritable() const;
  [[nodiscard]] std::string FindReadOnlyReason() const;

  std::optional<std::int32_t> SetAutoNumber(std::span<const Value> values);
  void RaiseAutoNumber(std::optional<std::int32_t> number);
  [[nodiscard]] KeyResult CheckedKey(std::size_t position, const RowLayout& row, IndexKey& key) const;
  void CheckUnique(std::size_t position, KeyResult result, const IndexKey& key) const;
  bool AddEntry(std::size_t position, IndexKey& key, RowId id);
  void RemoveEntry(std::size_t position, IndexKey& key, RowId id);
  void PrepareKeyChange(std::size_t position, const RowLayout& old, const RowLayout& row);
  void ChangeEntry(std::size_t position, RowId id);
  void EncodeUpdate(const RowLayout& old, std::span<const Assignment> assignments);
  void StoreLongParts();
  void RemoveLongValue(std::size_t column, ByteSpan stored);
  void RemoveReplacedLongValues(const RowLayout& old, std::span<const Assignment> assignments);

  Storage* storage_;
  std::string name_;
  TableDefinition definition_;
  PageHints hints_;
  bool dropped_ = false;
  bool system_changes_ = false;
  mutable std::optional<std::string> read_only_reason_;

  // Room for the change at hand, kept from one to the next.
  RowEncoder encoder_;
  std::vector<KeyOfRow> keys_;
  std::vector<KeyOfRow> old_keys_;
};

}  // namespace kestro::jet
