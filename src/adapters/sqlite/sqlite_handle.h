#pragma once

#include <filesystem>
#include <memory>

#include <sqlite3.h>

#include "adapters/sqlite/statement_cache.h"

namespace kestro::adapters {

struct HandleCloser {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using HandlePointer = std::unique_ptr<sqlite3, HandleCloser>;

/// The engine's UTF-8 form of a native path.
[[nodiscard]] std::string EnginePath(const std::filesystem::path& path);

/// One open database file with its settings made and its prepared statements. One thread only.
class SqliteHandle {
 public:
  /// Opens an existing file; never makes one. A file without write permission is opened for reading.
  /// Raises when it is missing, no file, no database, damaged or not readable. `path` must be absolute:
  /// a relative one could mean something else to the engine.
  explicit SqliteHandle(const std::filesystem::path& path);

  [[nodiscard]] sqlite3* get() const { return database_.get(); }
  [[nodiscard]] StatementCache& statements() { return statements_; }
  [[nodiscard]] bool read_only() const { return sqlite3_db_readonly(database_.get(), "main") == 1; }
  [[nodiscard]] bool in_transaction() const { return sqlite3_get_autocommit(database_.get()) == 0; }
  /// Runs statements without parameters and without rows to read.
  void Run(const char* statements);

 private:
  HandlePointer database_;
  StatementCache statements_;  // finalised before the file is closed
};

}  // namespace kestro::adapters
