#pragma once

#include <memory>

#include "adapters/sqlite/handle_pool.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "ports/database.h"

namespace kestro::adapters {

/// Contacts databases kept by SQLite, one file each. User-interface thread only.
///
/// Files stay open after their connections were closed and are closed with this object at the latest.
/// Connections to one file share what is open: one that is open while another begins a transaction takes
/// part in it.
class SqliteDatabase final : public ports::Database {
 public:
  explicit SqliteDatabase(NativePathFunction native_path) : native_path_(std::move(native_path)) {}
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  /// Neither may outlive this object.
  [[nodiscard]] std::unique_ptr<ports::Connection> CreateConnection() override;
  [[nodiscard]] std::unique_ptr<ports::Command> CreateCommand() override;

 private:
  NativePathFunction native_path_;
  HandlePool pool_;
};

}  // namespace kestro::adapters
