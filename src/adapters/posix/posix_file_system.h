#pragma once

#include <string>

#include "adapters/posix/path_map.h"
#include "ports/file_system.h"

namespace kestro::adapters {

class PosixFileSystem final : public ports::FileSystem {
 public:
  /// Both folders are native; an empty user data folder means that there is none.
  PosixFileSystem(PathMap paths, std::string program_folder, std::string user_data_folder);

  [[nodiscard]] bool FileExists(std::string_view path) const override;
  [[nodiscard]] bool FolderExists(std::string_view path) const override;
  /// For the user alone (mode 0700).
  void CreateFolder(std::string_view path) override;
  /// See CopyFileAtomically.
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override;
  /// Read-only: the owner's write permission is missing, or this user may not write.
  [[nodiscard]] int FileAttributes(std::string_view path) const override;
  [[nodiscard]] std::unique_ptr<ports::FileReader> OpenForReading(std::string_view path) const override;
  [[nodiscard]] std::string ReadStart(std::string_view path, std::size_t most_bytes) const override;
  [[nodiscard]] std::string ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const override;
  [[nodiscard]] std::string ProgramFolder() const override;
  [[nodiscard]] std::string UserDataFolder() const override;

  static constexpr int kFolderAttribute = 16;

 private:
  PathMap paths_;
  std::string program_folder_;
  std::string user_data_folder_;
};

}  // namespace kestro::adapters
