#include "adapters/posix/plain_file.h"

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
  if (!S_ISREG(status.st_mode)) RaiseError(base::kPathAccessError, "not a file");
  return file;
}

std::string ReadToEnd(const FileDescriptor& file, std::size_t most_bytes) {
  std::string content;
  std::array<char, kBlockBytes> block{};
  while (true) {
    const ssize_t count = ::read(file.get(), block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Raise();
    if (count == 0) return content;
    const auto size = static_cast<std::size_t>(count);
    if (size > most_bytes - content.size()) throw base::RuntimeError(base::kOutOfMemory, "File too large");
    content.append(block.data(), size);
  }
}

}  // namespace kestro::adapters
