#include "adapters/posix/runtime_folder.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"
#include "adapters/posix/user_folders.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0700;
constexpr mode_t kPermissionBits = 07777;

bool IsOwnFolder(const struct stat& status) {
  return S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

std::string RuntimeFolderPath() {
  const std::string session = AbsolutePathFromEnvironment("XDG_RUNTIME_DIR");
  struct stat status {};
  if (!session.empty() && ::stat(session.c_str(), &status) == 0 && IsOwnFolder(status)) {
    return session + "/kestro-cti";
  }
  const std::string temporary = AbsolutePathFromEnvironment("TMPDIR");
  return (temporary.empty() ? "/tmp" : temporary) + "/kestro-cti-" + std::to_string(::geteuid());
}

}  // namespace

RuntimeFolder::RuntimeFolder() : path_(RuntimeFolderPath()) {}

void RuntimeFolder::Prepare() const {
  if (::mkdir(path_.c_str(), kUserOnly) != 0 && errno != EEXIST) RaiseSystemError(errno, base::kPathNotFound);
  if (!Exists()) base::RaiseFileError(base::kPathNotFound, path_);
}

bool RuntimeFolder::Exists() const {
  struct stat status {};
  if (::lstat(path_.c_str(), &status) != 0) {
    if (errno == ENOENT) return false;
    RaiseSystemError(errno, base::kPathNotFound);
  }
  if (!IsOwnFolder(status) || (status.st_mode & kPermissionBits) != kUserOnly) {
    base::RaiseFileError(base::kPathAccessError, path_ + " is not a folder of this user alone (mode 0700)");
  }
  return true;
}

}  // namespace kestro::adapters
