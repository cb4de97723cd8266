#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ports/file_system.h"

namespace kestro::test_support {

/// A file system without files; a test overrides what it needs.
class NoFiles : public ports::FileSystem {
 public:
  bool FileExists(std::string_view) const override { return false; }
  bool FolderExists(std::string_view) const override { return false; }
  void CreateFolder(std::string_view) override {}
  void CopyFileTo(std::string_view, std::string_view, bool) override {}
  int FileAttributes(std::string_view) const override { return 0; }
  std::string ReadTextLinesJoined(std::string_view, std::size_t) const override { return {}; }
  std::string ReadStart(std::string_view, std::size_t) const override { return {}; }
  std::unique_ptr<ports::FileReader> OpenForReading(std::string_view) const override { return nullptr; }
  std::string ProgramFolder() const override { return {}; }
  std::string UserDataFolder() const override { return {}; }
};

}  // namespace kestro::test_support
