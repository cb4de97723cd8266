#pragma once

#include <string>
#include <sys/types.h>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// The place in the file system where a local socket listens; for this user alone
/// (mode 0600). It goes with the object, unless something else has taken its name.
class SocketFile {
 public:
  /// Binds the socket to the path. The file of a program that is gone is replaced.
  /// Raises 58 when another program listens there or something else has the name,
  /// 75 or 76 for other failures.
  SocketFile(const FileDescriptor& socket, std::string path);
  ~SocketFile();
  SocketFile(const SocketFile&) = delete;
  SocketFile& operator=(const SocketFile&) = delete;

 private:
  std::string path_;
  dev_t device_ = 0;  // to know it again
  ino_t inode_ = 0;
};

}  // namespace kestro::adapters
