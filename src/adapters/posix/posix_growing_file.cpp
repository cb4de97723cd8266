#include "adapters/posix/posix_growing_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"
#include "adapters/posix/user_folders.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0600;
constexpr mode_t kPermissionBits = 07777;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kPathNotFound); }

}  // namespace

std::uint64_t PosixGrowingFile::Open(const std::string& path) {
  Close();
  // Not blocking: opening a named pipe fails instead of waiting for its reader.
  const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  FileDescriptor file(::open(paths_.ToNative(path).c_str(), flags, kUserOnly));
  if (!file) Raise();
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) Raise();
  const bool own = S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
  if (!own) base::RaiseFileError(base::kPathAccessError, "not a file of this user alone");
  if ((status.st_mode & kPermissionBits) != kUserOnly && ::fchmod(file.get(), kUserOnly) != 0) Raise();
  file_ = std::move(file);
  return static_cast<std::uint64_t>(status.st_size);
}

void PosixGrowingFile::Append(std::string_view lines) {
  ssize_t written = 0;
  do {
    written = ::write(file_.get(), lines.data(), lines.size());
  } while (written < 0 && errno == EINTR);
  if (written < 0) Raise();
  if (static_cast<std::size_t>(written) == lines.size()) return;
  // The disk is full in the middle of a line: take the piece back. If even that
  // fails, a broken line is the smaller harm.
  const off_t end = ::lseek(file_.get(), 0, SEEK_CUR);
  [[maybe_unused]] const int ignored = ::ftruncate(file_.get(), end - written);
  RaiseSystemError(ENOSPC, base::kPathNotFound);
}

void PosixGrowingFile::Rename(const std::string& from, const std::string& to) {
  const int result = std::rename(paths_.ToNative(from).c_str(), paths_.ToNative(to).c_str());
  if (result != 0 && errno != ENOENT) Raise();
}

void PosixGrowingFile::MakeFolder(const std::string& folder) { MakeFolders(paths_.ToNative(folder)); }

}  // namespace kestro::adapters
