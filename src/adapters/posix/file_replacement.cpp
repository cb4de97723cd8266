#include "adapters/posix/file_replacement.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr int kMostLinks = 40;
constexpr std::string_view kUniquePart = "XXXXXX";

std::string TemporaryNameStart(const std::string& name) { return "." + name + ".new-"; }

std::int32_t WriteAll(const FileDescriptor& file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(file.get(), content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return ::fsync(file.get()) == 0 ? 0 : errno;
}

/// Renaming would replace a write-protected file all the same.
std::int32_t CheckReplaceable(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if ((status.st_mode & S_IWUSR) == 0) return EACCES;
  return ::access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

bool IsPlainFileOfThisUser(int folder, const char* name) {
  struct stat status {};
  return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid();
}

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, FolderCloser> listing(::opendir(folder.c_str()));
  while (listing) {
    const dirent* const entry = ::readdir(listing.get());
    if (entry == nullptr) break;
    names.emplace_back(entry->d_name);
  }
  return names;
}

}  // namespace

std::string FollowLinks(const std::string& path) {
  std::filesystem::path current = path;
  for (int count = 0; count < kMostLinks; ++count) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(current, error);
    if (error) return current.string();
    current = current.parent_path() / target;
  }
  RaiseSystemError(ELOOP, base::kFileNotFound);
}

FileReplacement::FileReplacement(const std::string& file) {
  const auto separator = file.find_last_of('/');
  const bool has_folder = separator != std::string::npos;
  folder_path_ = has_folder ? file.substr(0, separator + 1) : "./";
  name_ = has_folder ? file.substr(separator + 1) : file;
}

std::int32_t FileReplacement::Open() {
  folder_ = FileDescriptor(::open(folder_path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder_) return errno;
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
  while (::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return 0;
    if (std::chrono::steady_clock::now() >= end) return EAGAIN;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  held_ = true;
  return 0;
}

std::int32_t FileReplacement::Write(std::string_view content) const {
  const std::string path = folder_path_ + name_;
  if (const std::int32_t error = CheckReplaceable(path); error != 0) return error;
  std::string temporary = folder_path_ + TemporaryNameStart(name_).append(kUniquePart);
  const FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));  // mode 0600, never an existing file
  if (!file) return errno;
  std::int32_t error = WriteAll(file, content);
  if (error == 0 && std::rename(temporary.c_str(), path.c_str()) != 0) error = errno;
  if (error != 0) {
    ::unlink(temporary.c_str());
    return error;
  }
  // A file system that cannot do this for a folder says EINVAL.
  return ::fsync(folder_.get()) == 0 || errno == EINVAL ? 0 : errno;
}

void FileReplacement::RemoveLeftovers() const {
  if (!held_) return;  // another program may be writing one right now
  const std::string start = TemporaryNameStart(name_);
  for (const std::string& name : NamesIn(folder_path_)) {
    const bool is_leftover = name.starts_with(start) && name.size() == start.size() + kUniquePart.size();
    if (is_leftover && IsPlainFileOfThisUser(folder_.get(), name.c_str())) {
      ::unlinkat(folder_.get(), name.c_str(), 0);
    }
  }
}

}  // namespace kestro::adapters
