#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "adapters/jetfile/system_file_layer.h"
#include "jet/error.h"

namespace kestro::adapters {
namespace {

using jet::Error;
using jet::ErrorKind;
using jet::FileMode;

std::string Reason(int number) { return std::generic_category().message(number); }

[[noreturn]] void Fail(const std::string& what, int number, ErrorKind kind = ErrorKind::kFileSystem) {
  throw Error(kind, what + ": " + Reason(number));
}

class PosixFile : public jet::File {
 public:
  PosixFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {}
  ~PosixFile() override { ::close(descriptor_); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  void Lock(FileMode mode) const {
    const int kind = mode == FileMode::kRead ? LOCK_SH : LOCK_EX;
    if (::flock(descriptor_, kind | LOCK_NB) == 0) return;
    if (errno == EWOULDBLOCK) throw Error(ErrorKind::kBusy, path_ + " is in use by another program");
    Fail(path_ + " cannot be locked", errno);
  }

  std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t count =
          ::pread(descriptor_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
      if (count == 0) break;
      if (count > 0) {
        done += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        Fail(path_ + " cannot be read", errno);
      }
    }
    return done;
  }

  void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t count =
          ::pwrite(descriptor_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
      if (count >= 0) {
        done += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        Fail(path_ + " cannot be written", errno);
      }
    }
  }

  std::uint64_t Size() override {
    struct stat status {};
    if (::fstat(descriptor_, &status) != 0) Fail(path_ + " has no size", errno);
    return static_cast<std::uint64_t>(status.st_size);
  }

  void Truncate(std::uint64_t size) override {
    if (::ftruncate(descriptor_, static_cast<off_t>(size)) != 0) Fail(path_ + " cannot be cut", errno);
  }

  // The size belongs to what fdatasync brings along; of the rest of the inode nothing is needed.
  void Sync() override {
    if (::fdatasync(descriptor_) != 0) Fail(path_ + " cannot be brought to the disk", errno);
  }

 private:
  int descriptor_;
  std::string path_;
};

ErrorKind KindOf(int number, FileMode mode) {
  if (number == ENOENT) return ErrorKind::kNotFound;
  const bool refused = number == EACCES || number == EPERM || number == EROFS;
  return refused && mode == FileMode::kReadWrite ? ErrorKind::kReadOnly : ErrorKind::kFileSystem;
}

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

std::unique_ptr<jet::File> SystemFileLayer::Open(const std::string& path, FileMode mode) {
  int flags = O_CLOEXEC | (mode == FileMode::kRead ? O_RDONLY : O_RDWR);
  if (mode == FileMode::kCreate) flags |= O_CREAT | O_EXCL;
  const int descriptor = ::open(path.c_str(), flags, 0600);  // contacts concern their owner only
  if (descriptor < 0) Fail(path + " cannot be opened", errno, KindOf(errno, mode));
  auto file = std::make_unique<PosixFile>(descriptor, path);
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    throw Error(ErrorKind::kFileSystem, path + " is no regular file");
  }
  file->Lock(mode);
  return file;
}

bool SystemFileLayer::Exists(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0) return true;
  if (errno == ENOENT || errno == ENOTDIR) return false;
  Fail(path + " cannot be looked at", errno);
}

void SystemFileLayer::Remove(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) Fail(path + " cannot be removed", errno);
}

void SystemFileLayer::SyncFolder(const std::string& path) {
  const std::string folder = FolderOf(path);
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) Fail(folder + " cannot be opened", errno);
  const int result = ::fsync(descriptor);
  const int number = errno;
  ::close(descriptor);
  // Some file systems have nothing to do there.
  if (result != 0 && number != EINVAL) Fail(folder + " cannot be brought to the disk", number);
}

}  // namespace kestro::adapters
