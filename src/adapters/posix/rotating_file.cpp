#include "adapters/posix/rotating_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0600;
constexpr mode_t kPermissionBits = 07777;

[[noreturn]] void RaiseForFile(int error) { RaiseSystemError(error, base::kPathNotFound); }

}  // namespace

RotatingFile::RotatingFile(std::string path, std::uint64_t size_limit)
    : path_(std::move(path)), size_limit_(size_limit) {
  Open();
}

void RotatingFile::Open() {
  // Not blocking: opening a named pipe fails instead of waiting for its reader.
  const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  FileDescriptor file(::open(path_.c_str(), flags, kUserOnly));
  if (!file) RaiseForFile(errno);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) RaiseForFile(errno);
  const bool own = S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
  if (!own) RaiseError(base::kPathAccessError, "not a file of this user alone");
  if ((status.st_mode & kPermissionBits) != kUserOnly && ::fchmod(file.get(), kUserOnly) != 0) {
    RaiseForFile(errno);
  }
  size_ = static_cast<std::uint64_t>(status.st_size);
  file_ = std::move(file);
}

void RotatingFile::Append(std::string_view line) {
  if (size_ > 0 && size_ + line.size() > size_limit_) PutAside();
  ssize_t written = 0;
  do {
    written = ::write(file_.get(), line.data(), line.size());
  } while (written < 0 && errno == EINTR);
  if (written < 0) RaiseForFile(errno);
  if (static_cast<std::size_t>(written) < line.size()) {
    // The disk is full in the middle of the line: take the piece back. If even that
    // fails, a broken line is the smaller harm.
    [[maybe_unused]] const int ignored = ::ftruncate(file_.get(), static_cast<off_t>(size_));
    RaiseForFile(ENOSPC);
  }
  size_ += line.size();
}

void RotatingFile::PutAside() {
  for (int number = kKeptFiles; number > 0; --number) {
    const std::string from = number == 1 ? path_ : path_ + "." + std::to_string(number - 1);
    const std::string to = path_ + "." + std::to_string(number);
    if (std::rename(from.c_str(), to.c_str()) != 0 && errno != ENOENT) RaiseForFile(errno);
  }
  Open();
}

}  // namespace kestro::adapters
