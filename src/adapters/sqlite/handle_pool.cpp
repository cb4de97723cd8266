#include "adapters/sqlite/handle_pool.h"

namespace kestro::adapters {

std::shared_ptr<SqliteHandle> HandlePool::Acquire(const std::filesystem::path& path) {
  if (!path.is_absolute()) return Acquire(std::filesystem::absolute(path));
  // Taken before the file is opened: one that is replaced in between looks replaced the next time.
  const auto identity = IdentityOf(path);
  const auto found = entries_.find(path.native());
  if (found == entries_.end()) return OpenAndKeep(path, identity);
  if (identity != found->second.identity) {
    entries_.erase(found);
    return OpenAndKeep(path, identity);
  }
  if (found->second.handle->in_transaction()) return std::make_shared<SqliteHandle>(path);
  return found->second.handle;
}

std::shared_ptr<SqliteHandle> HandlePool::OpenAndKeep(const std::filesystem::path& path,
                                                      const std::optional<FileIdentity>& identity) {
  auto handle = std::make_shared<SqliteHandle>(path);
  // A read-only handle would stay one after the file has become writable.
  if (!identity || handle->read_only()) return handle;
  if (entries_.size() >= kCapacity) entries_.erase(entries_.begin());
  entries_.emplace(path.native(), Entry{*identity, handle});
  return handle;
}

}  // namespace kestro::adapters
