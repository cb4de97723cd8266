#include "adapters/sqlite/sqlite_command.h"

#include <utility>

#include "adapters/sqlite/sqlite_error.h"

namespace kestro::adapters {

void SqliteCommand::SetCommandType(int type) {
  if (type != kText) RaiseDatabaseError("Only commands given as text can be run.");
}

void SqliteCommand::SetActiveConnection(ports::Connection& connection) {
  connection_ = dynamic_cast<SqliteConnection*>(&connection);
  if (connection_ == nullptr) RaiseDatabaseError("The connection belongs to another database component.");
}

std::unique_ptr<ports::Recordset> SqliteCommand::Execute(int /*options*/) {
  if (connection_ == nullptr) RaiseDatabaseError("The command has no connection.");
  const auto handle = connection_->handle();
  // The handle may be shared: what it remembers can be another connection's key.
  sqlite3_set_last_insert_rowid(handle->get(), connection_->LastInsertedKey());
  auto rows = std::make_unique<SqliteRecordset>(handle, *connection_, handle->statements().Take(text_),
                                                std::exchange(parameters_, {}));
  connection_->NoteInsertedKey(sqlite3_last_insert_rowid(handle->get()));
  return rows;
}

}  // namespace kestro::adapters
