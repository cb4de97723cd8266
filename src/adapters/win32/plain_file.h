#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "adapters/win32/file_handle.h"
#include "ports/file_system.h"

namespace kestro::adapters {

/// Opens a file on a disk for reading; others may go on using it. A folder, a
/// pipe or a device is refused (75), a missing file raises 53.
[[nodiscard]] Handle OpenPlainFile(const std::wstring& path);

/// Everything to the end. Raises 7 for more than `most_bytes`, also when the
/// file grows meanwhile; 75 when it cannot be read.
[[nodiscard]] std::string ReadToEnd(const Handle& file, std::size_t most_bytes);

/// At most `most_bytes` from the present position on; 75 when it cannot be read.
[[nodiscard]] std::string ReadUpTo(const Handle& file, std::size_t most_bytes);

/// Reads an opened file block by block.
class PlainFileReader final : public ports::FileReader {
 public:
  explicit PlainFileReader(Handle file) : file_(std::move(file)) {}
  [[nodiscard]] std::size_t Read(std::span<char> block) override;

 private:
  Handle file_;
};

/// Writes everything; raises 75 when the disk does not take it.
void WriteAll(const Handle& file, std::string_view bytes);

}  // namespace kestro::adapters
