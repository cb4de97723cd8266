#pragma once

#include <memory>

#include "adapters/sqlite/handle_pool.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "ports/database.h"

namespace kestro::adapters {

/// Contacts databases in Jet 4.0 files, with SQLite's SQL. User-interface thread only.
///
/// The file used last stays open, and locked against other programs, after its connections were closed; it
/// is closed when another one is opened and with this object at the latest. Connections to one file share
/// what is open: one that is open while another begins a transaction takes part in it.
class SqliteDatabase final : public ports::Database {
 public:
  /// `files` must outlive this object and what it makes.
  SqliteDatabase(jet::FileLayer& files, NativePathFunction native_path)
      : native_path_(std::move(native_path)), pool_(files) {}
  ~SqliteDatabase() override = default;
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
