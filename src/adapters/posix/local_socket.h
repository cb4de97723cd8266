#pragma once

#include <string>
#include <sys/socket.h>
#include <sys/un.h>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// Raises 75 for a path that does not fit into a socket address.
[[nodiscard]] sockaddr_un SocketAddress(const std::string& path);

/// A local socket that does not block, SOCK_STREAM or SOCK_DGRAM. Raises 75.
[[nodiscard]] FileDescriptor NewLocalSocket(int type = SOCK_STREAM);

/// 0, or errno.
[[nodiscard]] int ConnectTo(const FileDescriptor& socket, const std::string& path);

/// The process at the other end runs as this user.
[[nodiscard]] bool IsPeerThisUser(const FileDescriptor& connection);

}  // namespace kestro::adapters
