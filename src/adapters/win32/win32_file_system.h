#pragma once

#include <functional>
#include <string>

#include "ports/file_system.h"

namespace kestro::adapters {

/// The disk. Paths are the system's own, passed on as they stand or through a translator.
class Win32FileSystem final : public ports::FileSystem {
 public:
  /// Where one of the program's paths really lies; may raise base::RuntimeError
  /// for a path that lies nowhere.
  using PathTranslator = std::function<std::string(std::string_view path)>;

  /// Both folders are the program's own paths; an empty user data folder means
  /// that there is none. Without a translator paths are what they are.
  Win32FileSystem(std::string program_folder, std::string user_data_folder, PathTranslator real_path = {});

  [[nodiscard]] bool FileExists(std::string_view path) const override;
  [[nodiscard]] bool FolderExists(std::string_view path) const override;
  /// With the access rights of the folder above: below %APPDATA% the user alone has them.
  void CreateFolder(std::string_view path) override;
  /// See CopyFileAtomically.
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override;
  [[nodiscard]] int FileAttributes(std::string_view path) const override;
  [[nodiscard]] std::string ReadStart(std::string_view path, std::size_t most_bytes) const override;
  [[nodiscard]] std::unique_ptr<ports::FileReader> OpenForReading(std::string_view path) const override;
  [[nodiscard]] std::string ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const override;
  [[nodiscard]] std::string ProgramFolder() const override { return program_folder_; }
  [[nodiscard]] std::string UserDataFolder() const override;

 private:
  /// Raises 76 for a path with a zero character.
  [[nodiscard]] std::wstring RealPath(std::string_view path) const;
  /// The system's attribute bits, all ones when nothing lies there.
  [[nodiscard]] unsigned long AttributesOf(std::string_view path) const;

  std::string program_folder_;
  std::string user_data_folder_;
  PathTranslator real_path_;
};

}  // namespace kestro::adapters
