#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <sqlite3.h>

#include "adapters/sqlite/jet_session.h"
#include "adapters/sqlite/statement_cache.h"
#include "jet/file_layer.h"

namespace kestro::adapters {

struct HandleCloser {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using HandlePointer = std::unique_ptr<sqlite3, HandleCloser>;

/// The engine's UTF-8 form of a native path.
[[nodiscard]] std::string EnginePath(const std::filesystem::path& path);

/// A connection of SQLite to a database of its own in memory, with ContainsText and TextOrder.
[[nodiscard]] HandlePointer OpenConnection();

/// One open database file with its prepared statements: the file's tables as virtual tables of a connection
/// of SQLite. One thread only.
///
/// No other program can open the file as long as the handle lives, except that several may read a file that
/// is not writable.
class SqliteHandle {
 public:
  /// Opens an existing file; never makes one. A database of an earlier version is converted first (see
  /// sqlite_file_conversion.h). A file without write permission is opened for reading.
  /// Raises when it is missing, no file, no database, damaged, not readable or in use by another program.
  /// `files` must outlive the handle.
  SqliteHandle(jet::FileLayer& files, const std::filesystem::path& path);

  [[nodiscard]] sqlite3* get() const { return connection_.get(); }
  [[nodiscard]] StatementCache& statements() { return statements_; }
  [[nodiscard]] bool read_only() const { return !session_->database().ReadOnlyReason().empty(); }
  /// Runs statements without parameters and without rows to read.
  void Run(const char* statements);
  /// For when no change is in sight: nothing but the database file itself stays on the disk.
  void LeaveOneFile() { session_->database().LeaveOneFile(); }

 private:
  std::shared_ptr<JetSession> session_;  // closed when the last virtual table is gone
  HandlePointer connection_;
  StatementCache statements_;  // finalised before the connection is closed
};

}  // namespace kestro::adapters
