#include "adapters/posix/posix_file_system.h"

#include <cerrno>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/atomic_copy.h"
#include "adapters/posix/plain_file.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0700;

/// Mode of what lies there; nothing when nothing does or the path has no native counterpart.
std::optional<mode_t> ModeOf(const PathMap& paths, std::string_view path) {
  struct stat status {};
  try {
    if (::stat(paths.ToNative(path).c_str(), &status) != 0) return std::nullopt;
  } catch (const base::RuntimeError&) {
    return std::nullopt;
  }
  return status.st_mode;
}

class PlainFileReader final : public ports::FileReader {
 public:
  explicit PlainFileReader(FileDescriptor file) : file_(std::move(file)) {}
  [[nodiscard]] std::size_t Read(std::span<char> block) override { return ReadSome(file_, block); }

 private:
  FileDescriptor file_;
};

std::string WithoutTrailingSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

PosixFileSystem::PosixFileSystem(PathMap paths, std::string program_folder, std::string user_data_folder)
    : paths_(std::move(paths)),
      program_folder_(WithoutTrailingSeparator(std::move(program_folder))),
      user_data_folder_(WithoutTrailingSeparator(std::move(user_data_folder))) {}

bool PosixFileSystem::FileExists(std::string_view path) const {
  const auto mode = ModeOf(paths_, path);
  return mode && !S_ISDIR(*mode);
}

bool PosixFileSystem::FolderExists(std::string_view path) const {
  const auto mode = ModeOf(paths_, path);
  return mode && S_ISDIR(*mode);
}

void PosixFileSystem::CreateFolder(std::string_view path) {
  if (::mkdir(paths_.ToNative(path).c_str(), kUserOnly) != 0) RaiseSystemError(errno, base::kPathNotFound);
}

void PosixFileSystem::CopyFileTo(std::string_view source, std::string_view target, bool overwrite) {
  CopyFileAtomically(paths_.ToNative(source), paths_.ToNative(target), overwrite);
}

int PosixFileSystem::FileAttributes(std::string_view path) const {
  const auto mode = ModeOf(paths_, path);
  if (!mode) base::RaiseFileError(base::kFileNotFound);
  const bool writable = (*mode & S_IWUSR) != 0 && ::access(paths_.ToNative(path).c_str(), W_OK) == 0;
  return (writable ? 0 : kReadOnlyAttribute) | (S_ISDIR(*mode) ? kFolderAttribute : 0);
}

std::unique_ptr<ports::FileReader> PosixFileSystem::OpenForReading(std::string_view path) const {
  return std::make_unique<PlainFileReader>(OpenPlainFile(paths_.ToNative(path)));
}

std::string PosixFileSystem::ReadStart(std::string_view path, std::size_t most_bytes) const {
  return ReadUpTo(OpenPlainFile(paths_.ToNative(path)), most_bytes);
}

std::string PosixFileSystem::ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const {
  std::string text = ReadToEnd(OpenPlainFile(paths_.ToNative(path)), most_bytes);
  std::erase_if(text, [](char byte) { return byte == '\r' || byte == '\n'; });
  return text;
}

std::string PosixFileSystem::ProgramFolder() const { return paths_.ToSystem(program_folder_); }

std::string PosixFileSystem::UserDataFolder() const {
  if (user_data_folder_.empty()) base::RaiseFileError(base::kPathNotFound, "there is no home folder");
  return paths_.ToSystem(user_data_folder_);
}

}  // namespace kestro::adapters
