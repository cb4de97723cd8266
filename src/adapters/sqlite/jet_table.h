#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <sqlite3.h>

#include "adapters/sqlite/jet_session.h"
#include "jet/table.h"

namespace kestro::adapters {

/// A table of the file as SQLite's virtual table. A row's rowid is its key when the table has a primary key
/// of one whole number, otherwise a number for as long as the row lives.
class JetTable : public sqlite3_vtab {
 public:
  JetTable(std::shared_ptr<JetSession> session, std::shared_ptr<jet::Table> table);

  [[nodiscard]] JetSession& session() const { return *session_; }
  [[nodiscard]] jet::Table& table() const { return *table_; }
  [[nodiscard]] bool has_key() const { return key_column_.has_value(); }
  /// Both only when there is a key.
  [[nodiscard]] std::size_t key_index() const { return *key_index_; }
  [[nodiscard]] std::size_t key_column() const { return *key_column_; }

  /// Nothing when there is no row of this rowid.
  [[nodiscard]] std::optional<jet::RowId> FindRow(std::int64_t rowid) const;

  /// What sqlite3_declare_vtab takes.
  [[nodiscard]] std::string Declaration() const;

 private:
  std::shared_ptr<JetSession> session_;  // outlives the table
  std::shared_ptr<jet::Table> table_;
  std::optional<std::size_t> key_index_;
  std::optional<std::size_t> key_column_;
};

/// `name` as SQL writes an identifier.
[[nodiscard]] std::string QuotedName(std::string_view name);

}  // namespace kestro::adapters
