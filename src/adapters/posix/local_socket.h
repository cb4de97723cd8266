#pragma once

#include <string>
#include <sys/un.h>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// Raises 75 for a path that does not fit into a socket address.
[[nodiscard]] sockaddr_un SocketAddress(const std::string& path);

/// A local stream socket that does not block. Raises 75.
[[nodiscard]] FileDescriptor NewLocalSocket();

/// 0, or errno.
[[nodiscard]] int ConnectTo(const FileDescriptor& socket, const std::string& path);

/// The process at the other end runs as this user.
[[nodiscard]] bool IsPeerThisUser(const FileDescriptor& connection);

}  // namespace kestro::adapters
