#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/keyset_pages.h"
#include "contacts/keyset_query.h"
#include "ports/database.h"

namespace kestro::contacts {

/// A result of any length that can be scrolled at once: of each row only the key is collected (8 bytes),
/// in the order of the list; the other fields are read by key when a row near them is looked at.
///
/// A connection is open only while keys or a page of rows are being read, so the list never stands in
/// anybody's way, and ActiveConnection is null. What others do to the rows meanwhile: a new row appears
/// with the next search or sort; a changed one shows its new fields once its page is read anew, at the old
/// place; a deleted one stays as an empty row, of which only the key can be read.
///
/// The key is a whole number, the other fields are read as texts (null as an empty one); only fields of a
/// deleted row are null. SetSort takes every field; rows that are equal in it are ordered by key. When it
/// raises, the rows stay as they were.
class KeysetRecordset final : public ports::Recordset {
 public:
  /// Collects the keys. The database must outlive the recordset.
  KeysetRecordset(ports::Database& database, std::string_view connection_string, KeysetQuery query);

  [[nodiscard]] bool AtEnd() const override;
  void MoveNext() override;
  [[nodiscard]] std::int64_t RecordCount() const override;
  [[nodiscard]] std::int64_t Position() const override;
  void MoveTo(std::int64_t row) override;
  [[nodiscard]] int FieldCount() const override;
  [[nodiscard]] std::string_view FieldName(int index) const override;
  [[nodiscard]] ports::DatabaseValue Field(int index) const override;
  [[nodiscard]] std::string_view Text(int index) const override;
  [[nodiscard]] std::int64_t Integer(int index) const override;
  [[nodiscard]] int FieldIndex(std::string_view name) const override;
  [[nodiscard]] std::string Sort() const override;
  void SetSort(std::string_view sort) override;
  void Close() override;
  [[nodiscard]] ports::Connection* ActiveConnection() override { return nullptr; }
  void ClearActiveConnection() override {}

 private:
  using Keys = std::vector<std::int64_t>;

  void RequireOpen() const;
  /// Raises for a field that is not there, and when there is no current row.
  void RequireCurrentRow(int index) const;
  [[nodiscard]] Keys CollectKeys(const SortOrder& order) const;
  [[nodiscard]] const KeysetPages::Row& CurrentRow() const;
  [[nodiscard]] KeysetPages::Page ReadPage(std::size_t first) const;

  ports::Database& database_;
  std::string connection_string_;
  KeysetQuery query_;
  std::string rows_statement_;
  std::string sort_;
  Keys keys_;
  std::size_t position_ = 0;
  bool closed_ = false;
  mutable KeysetPages pages_;  // reading a field may read its page
};

}  // namespace kestro::contacts
