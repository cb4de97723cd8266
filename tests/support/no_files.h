#pragma once

#include "base/runtime_error.h"
#include "ports/file_system.h"

namespace kestro::test {

/// Two folders and no file in them. A test overrides what it needs.
class NoFiles : public ports::FileSystem {
 public:
  bool FileExists(std::string_view) const override { return false; }
  bool FolderExists(std::string_view) const override { return false; }
  void CreateFolder(std::string_view) override {}
  void CopyFileTo(std::string_view, std::string_view, bool) override { Refuse(); }
  int FileAttributes(std::string_view) const override { Refuse(); }
  std::string ReadTextLinesJoined(std::string_view, std::size_t) const override { Refuse(); }
  std::string ReadStart(std::string_view, std::size_t) const override { Refuse(); }
  std::unique_ptr<ports::FileReader> OpenForReading(std::string_view) const override { Refuse(); }
  std::string ProgramFolder() const override { return "C:\\Program"; }
  std::string UserDataFolder() const override { return "C:\\Data"; }

 protected:
  [[noreturn]] static void Refuse() { throw base::RuntimeError(base::kFileNotFound, "File not found"); }
};

}  // namespace kestro::test
