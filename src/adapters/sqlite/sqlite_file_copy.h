#pragma once

#include <filesystem>
#include <string>

#include "adapters/sqlite/sqlite_handle.h"
#include "jet/file_layer.h"

namespace kestro::adapters {

/// Copies a contacts database in SQLite's format into a new file.
class SqliteFileCopy {
 public:
  /// Opens the file and keeps everybody else out. Raises when that is not possible.
  explicit SqliteFileCopy(const std::filesystem::path& path);

  /// Makes the file `path` and compares it with the original. Raises, or throws jet::Error, for any failure
  /// or difference; the file is then in an unknown state. Once only.
  void To(jet::FileLayer& files, const std::string& path);

 private:
  HandlePointer connection_;  // the original is attached
};

}  // namespace kestro::adapters
