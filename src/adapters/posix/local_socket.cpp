#include "adapters/posix/local_socket.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {

sockaddr_un SocketAddress(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof(address.sun_path)) {
    base::RaiseFileError(base::kPathAccessError, "the path of the socket is too long: " + path);
  }
  std::copy(path.begin(), path.end(), address.sun_path);
  return address;
}

FileDescriptor NewLocalSocket(int type) {
  FileDescriptor socket(::socket(AF_UNIX, type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket) RaiseSystemError(errno, base::kPathNotFound);
  return socket;
}

int ConnectTo(const FileDescriptor& socket, const std::string& path) {
  const sockaddr_un address = SocketAddress(path);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  return ::connect(socket.get(), generic, sizeof(address)) == 0 ? 0 : errno;
}

bool IsPeerThisUser(const FileDescriptor& connection) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  const int result = ::getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size);
  return result == 0 && size == sizeof(peer) && peer.uid == ::geteuid();
}

}  // namespace kestro::adapters
