#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// Opens a file (native path, links are followed) for reading. Never waits: a
/// named pipe, a device or a folder is refused. Raises 53 when it is missing,
/// otherwise what RaiseSystemError does.
[[nodiscard]] FileDescriptor OpenPlainFile(const std::string& path);

/// The next bytes from the descriptor's position on; 0 at the end. Raises 75 when
/// it cannot be read.
[[nodiscard]] std::size_t ReadSome(const FileDescriptor& file, std::span<char> block);

/// Everything from the descriptor's position to the end. Raises 7 for more than
/// `most_bytes`, also when the file grows meanwhile; 75 when it cannot be read.
[[nodiscard]] std::string ReadToEnd(const FileDescriptor& file, std::size_t most_bytes);

/// At most `most_bytes` from the descriptor's position on; 75 when it cannot be read.
[[nodiscard]] std::string ReadUpTo(const FileDescriptor& file, std::size_t most_bytes);

}  // namespace kestro::adapters
