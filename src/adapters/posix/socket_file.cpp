#include "adapters/posix/socket_file.h"

#include <cerrno>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0600;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kPathNotFound); }

/// 0, or errno.
int Bind(const FileDescriptor& socket, const std::string& path) {
  const sockaddr_un address = SocketAddress(path);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  return ::bind(socket.get(), generic, sizeof(address)) == 0 ? 0 : errno;
}

/// A socket file, of whatever kind, that nobody listens at.
bool IsStale(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) return false;
  return ConnectTo(NewLocalSocket(), path) == ECONNREFUSED;
}

void BindReplacingStaleFile(const FileDescriptor& socket, const std::string& path) {
  int error = Bind(socket, path);
  if (error == EADDRINUSE && IsStale(path)) {
    if (::unlink(path.c_str()) != 0) Raise();
    error = Bind(socket, path);
  }
  if (error == EADDRINUSE) base::RaiseFileError(base::kFileAlreadyExists, path + " is in use");
  if (error != 0) RaiseSystemError(error, base::kPathNotFound);
}

}  // namespace

SocketFile::SocketFile(const FileDescriptor& socket, std::string path) : path_(std::move(path)) {
  // The file gets the mode of the socket: at no moment is it open to others.
  if (::fchmod(socket.get(), kUserOnly) != 0) Raise();
  BindReplacingStaleFile(socket, path_);
  struct stat status {};
  if (::lstat(path_.c_str(), &status) != 0) Raise();
  const bool for_others = (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
  if (!S_ISSOCK(status.st_mode) || for_others) base::RaiseFileError(base::kPathAccessError, path_);
  device_ = status.st_dev;
  inode_ = status.st_ino;
}

SocketFile::~SocketFile() {
  struct stat status {};
  const bool is_ours =
      ::lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
  if (is_ours) ::unlink(path_.c_str());
}

}  // namespace kestro::adapters
