#include "adapters/posix/instance_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "adapters/posix/activation_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0600;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kPathNotFound); }

}  // namespace

bool InstanceLock::AnotherInstanceRuns() {
  if (lock_) return false;
  folder_.Prepare();
  const std::string path = folder_.path() + "/instance.lock";
  // Not blocking: something else in the file's place is refused below instead of being waited for.
  const int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  FileDescriptor file(::open(path.c_str(), flags, kUserOnly));
  if (!file) Raise();
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) Raise();
  if (!S_ISREG(status.st_mode)) base::RaiseFileError(base::kPathAccessError, path + " is not a file");
  while (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return true;
    if (errno != EINTR) Raise();
  }
  lock_ = std::move(file);
  return false;
}

void InstanceLock::BringOtherToFront() { RequestActivation(ActivationSocketPath(folder_)); }

}  // namespace kestro::adapters
