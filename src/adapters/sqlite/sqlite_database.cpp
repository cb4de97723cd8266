#include "adapters/sqlite/sqlite_database.h"

#include "adapters/sqlite/sqlite_command.h"

namespace kestro::adapters {

std::unique_ptr<ports::Connection> SqliteDatabase::CreateConnection() {
  return std::make_unique<SqliteConnection>(pool_, native_path_);
}

std::unique_ptr<ports::Command> SqliteDatabase::CreateCommand() { return std::make_unique<SqliteCommand>(); }

}  // namespace kestro::adapters
