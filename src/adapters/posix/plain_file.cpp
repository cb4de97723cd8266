#include "adapters/posix/plain_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kBlockBytes = 16UL * 1024UL;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kFileNotFound); }

}  // namespace

FileDescriptor OpenPlainFile(const std::string& path) {
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) Raise();
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) Raise();
  if (!S_ISREG(status.st_mode)) base::RaiseFileError(base::kPathAccessError, "not a file");
  return file;
}

std::size_t ReadSome(const FileDescriptor& file, std::span<char> block) {
  while (true) {
    const ssize_t count = ::read(file.get(), block.data(), block.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) Raise();
  }
}

std::string ReadUpTo(const FileDescriptor& file, std::size_t most_bytes) {
  std::string content;
  std::array<char, kBlockBytes> block{};
  while (content.size() < most_bytes) {
    const auto wanted = std::min(block.size(), most_bytes - content.size());
    const std::size_t count = ReadSome(file, std::span(block).first(wanted));
    if (count == 0) break;
    content.append(block.data(), count);
  }
  return content;
}

std::string ReadToEnd(const FileDescriptor& file, std::size_t most_bytes) {
  std::string content = ReadUpTo(file, most_bytes + 1);
  if (content.size() > most_bytes) throw base::RuntimeError(base::kOutOfMemory, "File too large");
  return content;
}

}  // namespace kestro::adapters
