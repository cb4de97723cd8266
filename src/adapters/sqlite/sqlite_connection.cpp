#include "adapters/sqlite/sqlite_connection.h"

#include <string>

#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/sqlite_error.h"
#include "base/runtime_error.h"

namespace kestro::adapters {

SqliteConnection::~SqliteConnection() {
  if (!handle_) return;
  if (in_transaction_) sqlite3_exec(handle_->get(), "ROLLBACK", nullptr, nullptr, nullptr);
  handle_->LeaveOneFile();
}

void SqliteConnection::Open(std::string_view connection_string, std::string_view /*user*/,
                            std::string_view /*password*/, int /*options*/) {
  if (handle_) RaiseDatabaseError("The connection is open already.");
  if (!connection_string.empty()) connection_string_ = connection_string;
  const std::string path(DataSourceOf(connection_string_));
  try {
    handle_ = pool_.Acquire(native_path_(path));
  } catch (const base::RuntimeError& error) {
    // The path as the system knows it: the native one means nothing to the reader of a log.
    throw base::RuntimeError(error.number(), "Database '" + path + "': " + error.description(),
                             error.source());
  }
  last_inserted_key_ = 0;
}

void SqliteConnection::Close() {
  const auto closing = handle();
  handle_.reset();
  closing->LeaveOneFile();
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
