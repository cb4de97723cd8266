#include "adapters/sqlite/handle_pool.h"

namespace kestro::adapters {

bool HandlePool::IsKept(const std::filesystem::path& path,
                        const std::optional<DatabaseFileIdentity>& identity) const {
  if (!handle_ || !identity) return false;
  if (path == path_ && identity == identity_) return true;
  // Another name or other permissions: the file is locked by the handle in use.
  const bool same_file =
      identity->file != 0 && identity->file == identity_->file && identity->device == identity_->device;
  return same_file && handle_.use_count() > 1;
}

std::shared_ptr<SqliteHandle> HandlePool::Acquire(const std::filesystem::path& path) {
  if (!path.is_absolute()) return Acquire(std::filesystem::absolute(path));
  // Taken before the file is opened: one that is replaced in between looks replaced the next time.
  const auto identity = IdentityOf(path);
  if (IsKept(path, identity)) return handle_;
  handle_.reset();  // first of all: it may be the same file
  auto opened = std::make_shared<SqliteHandle>(files_, path);
  // A read-only handle would stay one after the file has become writable.
  if (!identity || opened->read_only()) return opened;
  path_ = path;
  identity_ = identity;
  handle_ = opened;
  return opened;
}

}  // namespace kestro::adapters
