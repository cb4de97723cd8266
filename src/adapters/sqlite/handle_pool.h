#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "adapters/sqlite/file_identity.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "jet/file_layer.h"

namespace kestro::adapters {

/// Keeps the database file that was used last open between connections, because opening one costs far more
/// than a look-up, and because nobody else may change it meanwhile.
///
/// Connections to the same file share its handle, an open transaction included.
class HandlePool {
 public:
  /// `files` must outlive the handles.
  explicit HandlePool(jet::FileLayer& files) : files_(files) {}

  /// Handle of the file that `path` leads to now; raises when it cannot be opened. A kept handle whose
  /// file was replaced, removed or given other permissions is not used any more, except that a file still
  /// in use by a connection is not opened a second time.
  [[nodiscard]] std::shared_ptr<SqliteHandle> Acquire(const std::filesystem::path& path);

 private:
  [[nodiscard]] bool IsKept(const std::filesystem::path& path,
                            const std::optional<DatabaseFileIdentity>& identity) const;

  jet::FileLayer& files_;
  std::filesystem::path path_;
  std::optional<DatabaseFileIdentity> identity_;
  std::shared_ptr<SqliteHandle> handle_;  // null: none is kept
};

}  // namespace kestro::adapters
