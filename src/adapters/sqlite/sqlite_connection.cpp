#include "adapters/sqlite/sqlite_connection.h"

#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/sqlite_error.h"

namespace kestro::adapters {

SqliteConnection::~SqliteConnection() {
  if (handle_ && in_transaction_) sqlite3_exec(handle_->get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteConnection::Open(std::string_view connection_string, std::string_view /*user*/,
                            std::string_view /*password*/, int /*options*/) {
  if (handle_) RaiseDatabaseError("The connection is open already.");
  if (!connection_string.empty()) connection_string_ = connection_string;
  handle_ = pool_.Acquire(native_path_(DataSourceOf(connection_string_)));
  last_inserted_key_ = 0;
}

void SqliteConnection::Close() {
  const auto closing = handle();
  handle_.reset();
  if (!in_transaction_) return;
  in_transaction_ = false;
  closing->Run("ROLLBACK");
}

void SqliteConnection::BeginTransaction() {
  handle()->Run("BEGIN");
  in_transaction_ = true;
}

void SqliteConnection::CommitTransaction() {
  handle()->Run("COMMIT");
  in_transaction_ = false;
}

void SqliteConnection::RollbackTransaction() {
  handle()->Run("ROLLBACK");
  in_transaction_ = false;
}

std::int64_t SqliteConnection::LastInsertedKey() {
  static_cast<void>(handle());
  return last_inserted_key_;
}

const std::shared_ptr<SqliteHandle>& SqliteConnection::handle() const {
  if (!handle_) RaiseDatabaseError("The connection is closed.");
  return handle_;
}

}  // namespace kestro::adapters
