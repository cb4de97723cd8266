#pragma once

#include <filesystem>
#include <map>
#include <memory>

#include "adapters/sqlite/file_identity.h"
#include "adapters/sqlite/sqlite_handle.h"

namespace kestro::adapters {

/// Keeps database files open between connections, because opening one costs far more than a look-up.
///
/// Connections to the same file share its handle. A query whose rows are still being read therefore never
/// stands in the way of a change made through another connection of this program. Only while a
/// transaction is open do new connections get a handle of their own.
class HandlePool {
 public:
  /// Files kept open; the settings dialog may probe any number of them.
  static constexpr std::size_t kCapacity = 4;

  /// Handle of the file that `path` leads to now; raises when it cannot be opened. A kept handle whose
  /// file was replaced, removed or given other permissions is not used any more.
  [[nodiscard]] std::shared_ptr<SqliteHandle> Acquire(const std::filesystem::path& path);

 private:
  struct Entry {
    FileIdentity identity;
    std::shared_ptr<SqliteHandle> handle;
  };

  std::shared_ptr<SqliteHandle> OpenAndKeep(const std::filesystem::path& path,
                                            const std::optional<FileIdentity>& identity);

  std::map<std::filesystem::path::string_type, Entry> entries_;
};

}  // namespace kestro::adapters
