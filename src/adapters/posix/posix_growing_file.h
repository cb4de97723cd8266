#pragma once

#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/path_map.h"
#include "ports/growing_file.h"

namespace kestro::adapters {

/// The file is the user's own (mode 0600, also when it existed with more): a
/// symbolic link, somebody else's file, a file with a second name or anything
/// that is no plain file is refused.
class PosixGrowingFile final : public ports::GrowingFile {
 public:
  explicit PosixGrowingFile(PathMap paths) : paths_(std::move(paths)) {}

  std::uint64_t Open(const std::string& path) override;
  void Append(std::string_view lines) override;
  void Close() override { file_.Reset(); }
  void Rename(const std::string& from, const std::string& to) override;
  void MakeFolder(const std::string& folder) override;

 private:
  PathMap paths_;
  FileDescriptor file_;
};

}  // namespace kestro::adapters
