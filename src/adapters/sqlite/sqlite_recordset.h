#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/sqlite/sqlite_handle.h"
#include "adapters/sqlite/statement_cache.h"
#include "ports/database.h"

namespace kestro::adapters {

using StatementParameter = std::variant<std::int64_t, std::string>;

/// Steps over a running statement. Shares the handle, so the rows can be read after the connection was
/// closed.
class SqliteRecordset final : public ports::Recordset {
 public:
  /// Binds the parameters and moves to the first row. A statement without columns is run to its end.
  SqliteRecordset(std::shared_ptr<SqliteHandle> handle, ports::Connection& connection,
                  StatementCache::Lease statement, std::vector<StatementParameter> parameters);

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
  [[nodiscard]] ports::Connection* ActiveConnection() override { return connection_; }
  void ClearActiveConnection() override { connection_ = nullptr; }

 private:
  [[nodiscard]] sqlite3_stmt* OpenStatement() const;
  [[nodiscard]] sqlite3_stmt* CurrentRow(int index) const;
  [[nodiscard]] std::string SortedQuery(std::string_view sort) const;
  void Start(StatementCache::Lease statement);
  void Restart();
  void Step();
  [[nodiscard]] std::int64_t CountRows() const;

  std::shared_ptr<SqliteHandle> handle_;
  ports::Connection* connection_;
  std::vector<StatementParameter> parameters_;  // bound without a copy: outlives the statement's use
  StatementCache::Lease statement_;
  std::string query_;  // the statement's own text, kept once a sort order has been set
  std::string sort_;
  std::int64_t position_ = 0;
  mutable std::optional<std::int64_t> count_;  // once asked for
  bool at_end_ = false;
};

}  // namespace kestro::adapters
