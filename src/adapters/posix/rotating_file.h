#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// A text file that grows at its end up to a size and is then put aside: NAME.1
/// is the last one put aside, NAME.3 the oldest; an older one is gone.
///
/// The file is the user's own (mode 0600, also when it existed with more): a
/// symbolic link, somebody else's file, a file with a second name or anything
/// that is no plain file is refused. Every failure raises base::RuntimeError and
/// leaves whole lines in the file.
class RotatingFile {
 public:
  static constexpr int kKeptFiles = 3;

  /// Opens or makes the file (native path) in an existing folder.
  RotatingFile(std::string path, std::uint64_t size_limit);

  /// Appends the line, which ends in a line feed, with one write.
  void Append(std::string_view line);

 private:
  void Open();
  void PutAside();

  std::string path_;
  std::uint64_t size_limit_;
  std::uint64_t size_ = 0;
  FileDescriptor file_;
};

}  // namespace kestro::adapters
