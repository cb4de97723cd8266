#pragma once

#include "adapters/win32/file_handle.h"
#include "ports/growing_file.h"

namespace kestro::adapters {

/// Others may read the file while it is open here, not write it. Who may read a
/// new one is what its folder says: the user's own folders are his alone.
class Win32GrowingFile final : public ports::GrowingFile {
 public:
  std::uint64_t Open(const std::string& path) override;
  void Append(std::string_view lines) override;
  void Close() override { file_.reset(); }
  void Rename(const std::string& from, const std::string& to) override;
  /// In a folder that exists.
  void MakeFolder(const std::string& folder) override;

 private:
  Handle file_;
};

}  // namespace kestro::adapters
