#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// The file that a path leads to through its symbolic links, whether that file
/// exists or not. Raises 75 for a circle of links.
[[nodiscard]] std::string FollowLinks(const std::string& path);

/// Replaces a file as a whole. The new content grows under a name of its own in
/// the same folder, is on the disk and only then takes the file's name: whoever
/// reads, also after a crash, finds the old content or the new one.
///
/// Holds the folder against other objects of this class, in this program or
/// another, as long as it lives. A crash leaves a file ".NAME.new-XXXXXX" at
/// most; RemoveLeftovers removes it.
class FileReplacement {
 public:
  /// For the file of that name (no link) in an existing folder.
  explicit FileReplacement(const std::string& file);

  /// 0, or a system error code: 11 when another program holds the folder longer
  /// than kPatienceMs. Nothing else works before this succeeds.
  [[nodiscard]] std::int32_t Open();
  /// 0, or a system error code; the old file is then untouched (13 when it is
  /// write-protected) and nothing of the new one remains. Only when the disk
  /// fails at the very end, the new file is in place and not certain to survive
  /// a power failure. The file is the user's alone (mode 0600).
  [[nodiscard]] std::int32_t Write(std::string_view content) const;
  void RemoveLeftovers() const;

  static constexpr int kPatienceMs = 500;

 private:
  std::string folder_path_;
  std::string name_;
  FileDescriptor folder_;
  bool held_ = false;  // a network file system may not know how
};

}  // namespace kestro::adapters
