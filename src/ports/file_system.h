#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kestro::ports {

/// A file that is being read from its start to its end. What happens to the file
/// meanwhile (it grows, it is renamed or deleted) disturbs nobody: the bytes are
/// those that are there when they are read.
class FileReader {
 public:
  virtual ~FileReader() = default;
  /// Puts the next bytes into the block (not empty) and returns their number, 0
  /// at the end. Raises 75 when the file cannot be read any further.
  [[nodiscard]] virtual std::size_t Read(std::span<char> block) = 0;
};

/// The scripting file-system object. Paths are the system's own ("\"
/// separators, UTF-8); the adapter translates. A failure is raised as
/// base::RuntimeError (53 file not found, 58 exists, 75 access, 76 path not found).
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  [[nodiscard]] virtual bool FileExists(std::string_view path) const = 0;
  [[nodiscard]] virtual bool FolderExists(std::string_view path) const = 0;
  virtual void CreateFolder(std::string_view path) = 0;
  virtual void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) = 0;
  /// Read-only attribute (bit 1) and the others; raises 53 for a missing file.
  [[nodiscard]] virtual int FileAttributes(std::string_view path) const = 0;
  /// All lines of a text file with nothing between them; a line ends with CR LF,
  /// LF or CR. The characters are the file's bytes as they stand. Raises 7 for a
  /// file of more than `most_bytes`, 53 for a missing one, 75 for a folder or a
  /// file that cannot be read.
  [[nodiscard]] virtual std::string ReadTextLinesJoined(std::string_view path,
                                                        std::size_t most_bytes) const = 0;
  /// The first bytes of a file, at most `most_bytes`. Raises 53 for a missing file, 75 for one that cannot be
  /// read.
  [[nodiscard]] virtual std::string ReadStart(std::string_view path, std::size_t most_bytes) const = 0;
  /// Opens a file to be read in blocks. Raises like ReadStart.
  [[nodiscard]] virtual std::unique_ptr<FileReader> OpenForReading(std::string_view path) const = 0;
  /// Folder in which the program lies, without a trailing separator.
  [[nodiscard]] virtual std::string ProgramFolder() const = 0;
  /// The user's application-data folder; raises when there is none.
  [[nodiscard]] virtual std::string UserDataFolder() const = 0;

  static constexpr int kReadOnlyAttribute = 1;
};

/// Path arithmetic on system paths; touches no disk.
[[nodiscard]] std::string GetParentFolderName(std::string_view path);
[[nodiscard]] std::string GetFileName(std::string_view path);
/// `folder` and `name` with exactly one separator between them.
[[nodiscard]] std::string BuildPath(std::string_view folder, std::string_view name);
/// True when the components of a path lead above its start, be it for a moment.
[[nodiscard]] bool LeadsOut(std::string_view path);

}  // namespace kestro::ports
