#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace kestro::jet {

/// An open file. Offsets and sizes are bytes. Failures are thrown as Error (kFileSystem).
class File {
 public:
  virtual ~File() = default;

  /// Fills `bytes` from `offset` on; returns how many were there (fewer only at the end of the file).
  [[nodiscard]] virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) = 0;

  /// Writes all bytes; the file grows when they reach beyond its end.
  virtual void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;

  [[nodiscard]] virtual std::uint64_t Size() = 0;
  virtual void Truncate(std::uint64_t size) = 0;

  /// Returns when everything written so far survives a loss of power.
  virtual void Sync() = 0;
};

enum class FileMode {
  kRead,       // others may read as well
  kReadWrite,  // nobody else may open the file
  kCreate,     // like kReadWrite, but the file must not exist yet
};

/// What the engine needs of the operating system. Paths are UTF-8. Outlives the databases opened through it.
/// Failures are thrown as Error: kNotFound, kBusy (somebody else holds the file), kReadOnly (opened for
/// writing, but it may only be read), otherwise kFileSystem.
class FileLayer {
 public:
  virtual ~FileLayer() = default;

  /// Opens and locks. The lock lives as long as the result.
  [[nodiscard]] virtual std::unique_ptr<File> Open(const std::string& path, FileMode mode) = 0;

  [[nodiscard]] virtual bool Exists(const std::string& path) = 0;

  /// Removes a file; it is no error when there is none.
  virtual void Remove(const std::string& path) = 0;

  /// Makes creations and removals in the folder of this file survive a loss of power.
  virtual void SyncFolder(const std::string& path) = 0;
};

}  // namespace kestro::jet
