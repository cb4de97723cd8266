#include "adapters/posix/atomic_copy.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kBlockBytes = 64UL * 1024UL;

[[noreturn]] void RaiseForFile() { RaiseSystemError(errno, base::kFileNotFound); }
[[noreturn]] void RaiseForFolder() { RaiseSystemError(errno, base::kPathNotFound); }

std::string FolderOf(const std::string& path) {
  const auto separator = path.find_last_of('/');
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

FileDescriptor OpenSource(const std::string& source) {
  // Not blocking: a named pipe without a writer would hold the program up.
  FileDescriptor file(::open(source.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) RaiseForFile();
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) RaiseForFile();
  if (!S_ISREG(status.st_mode)) base::RaiseFileError(base::kPathAccessError, "not a file");
  return file;
}

/// A new file (mode 0600) that removes itself unless it was given a name to stay under.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& folder) : path_(folder + "/.copy-XXXXXX") {
    file_ = FileDescriptor(::mkostemp(path_.data(), O_CLOEXEC));
    if (!file_) RaiseForFolder();
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!renamed_) ::unlink(path_.c_str());
  }

  void Write(std::span<const char> bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) RaiseForFolder();
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
  }

  void RenameTo(const std::string& target, bool overwrite) {
    if (::fsync(file_.get()) != 0) RaiseForFolder();
    if (!overwrite && RenamedWithoutOverwriting(target)) return;
    if (::rename(path_.c_str(), target.c_str()) != 0) RaiseForFolder();
    renamed_ = true;
  }

 private:
  /// False on a file system that cannot do it in one step; the caller has looked before.
  bool RenamedWithoutOverwriting(const std::string& target) {
    renamed_ = ::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0;
    if (!renamed_ && errno != EINVAL && errno != ENOSYS) RaiseForFolder();
    return renamed_;
  }

  std::string path_;
  FileDescriptor file_;
  bool renamed_ = false;
};

void CopyBytes(const FileDescriptor& source, TemporaryFile& copy) {
  std::array<char, kBlockBytes> block{};
  while (true) {
    const ssize_t count = ::read(source.get(), block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) RaiseForFile();
    if (count == 0) return;
    copy.Write(std::span(block).first(static_cast<std::size_t>(count)));
  }
}

/// Makes the new name itself survive a power failure; a file system that cannot is left at that.
void SyncFolder(const std::string& folder) {
  const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor) ::fsync(descriptor.get());
}

}  // namespace

void CopyFileAtomically(const std::string& source, const std::string& target, bool overwrite) {
  const FileDescriptor original = OpenSource(source);
  struct stat status {};
  const bool exists = ::stat(target.c_str(), &status) == 0;
  if (exists && !overwrite) base::RaiseFileError(base::kFileAlreadyExists);
  // A file that the user has write-protected is not replaced, although renaming could.
  const bool is_protected = (status.st_mode & S_IWUSR) == 0 || ::access(target.c_str(), W_OK) != 0;
  if (exists && is_protected) base::RaiseFileError(base::kPathAccessError);
  const std::string folder = FolderOf(target);
  TemporaryFile copy(folder);
  CopyBytes(original, copy);
  copy.RenameTo(target, overwrite);
  SyncFolder(folder);
}

}  // namespace kestro::adapters
