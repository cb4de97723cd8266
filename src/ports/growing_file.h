#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kestro::ports {

/// A file that grows at its end: the method log. One is open at a time. Paths are
/// the system's own ("\" separators, UTF-8). Every failure is raised as
/// base::RuntimeError (75 access, 76 path not found).
class GrowingFile {
 public:
  virtual ~GrowingFile() = default;
  /// Opens a file in an existing folder, or makes it for the user alone; another
  /// one that is open is closed. Returns its size in bytes. Whatever is no plain
  /// file is refused (75).
  virtual std::uint64_t Open(const std::string& path) = 0;
  /// Writes behind the end of the open file, at once. On a failure it takes back
  /// what was written if it can: a file of whole lines keeps whole lines.
  virtual void Append(std::string_view lines) = 0;
  virtual void Close() = 0;
  /// Renames a file, over one of the new name. That there is none is no error.
  virtual void Rename(const std::string& from, const std::string& to) = 0;
  /// Makes the folder for the user alone. That it exists is no error.
  virtual void MakeFolder(const std::string& folder) = 0;
};

}  // namespace kestro::ports
