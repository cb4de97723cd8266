#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <sys/stat.h>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// Tells whether a file is still the one that was read: another file under the
/// name, or the same one written to, is not.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modified_seconds = 0;
  std::int64_t modified_nanoseconds = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;

  /// Follows links; nothing when there is no file.
  [[nodiscard]] static std::optional<FileIdentity> Of(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return From(status);
  }
  [[nodiscard]] static std::optional<FileIdentity> Of(const FileDescriptor& file) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return std::nullopt;
    return From(status);
  }

 private:
  static FileIdentity From(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  }
};

}  // namespace kestro::adapters
