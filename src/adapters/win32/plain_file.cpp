#include "adapters/win32/plain_file.h"

#include <algorithm>
#include <array>

#include "adapters/win32/system_error.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{16} * 1024;
constexpr std::size_t kMostBytesAtOnce = std::size_t{1} << 20U;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void Raise() { RaiseSystemError(::GetLastError(), base::kFileNotFound); }

}  // namespace

Handle OpenPlainFile(const std::wstring& path) {
  Handle file = OwnHandle(::CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) Raise();
  if (::GetFileType(file.get()) != FILE_TYPE_DISK) base::RaiseFileError(base::kPathAccessError, "not a file");
  return file;
}

std::size_t PlainFileReader::Read(std::span<char> block) {
  DWORD count = 0;
  const auto wanted = static_cast<DWORD>(std::min<std::size_t>(block.size(), kMostBytesAtOnce));
  if (::ReadFile(file_.get(), block.data(), wanted, &count, nullptr) == FALSE) {
    RaiseSystemError(::GetLastError(), base::kPathAccessError);
  }
  return count;
}

std::string ReadUpTo(const Handle& file, std::size_t most_bytes) {
  std::string content;
  std::array<char, kBlockBytes> block{};
  while (content.size() < most_bytes) {
    const auto wanted = static_cast<DWORD>(std::min(block.size(), most_bytes - content.size()));
    DWORD count = 0;
    if (::ReadFile(file.get(), block.data(), wanted, &count, nullptr) == FALSE) Raise();
    if (count == 0) break;
    content.append(block.data(), count);
  }
  return content;
}

std::string ReadToEnd(const Handle& file, std::size_t most_bytes) {
  std::string content = ReadUpTo(file, most_bytes + 1);
  if (content.size() > most_bytes) throw base::RuntimeError(base::kOutOfMemory, "File too large");
  return content;
}

void WriteAll(const Handle& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto part = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kMostBytesAtOnce));
    DWORD written = 0;
    if (::WriteFile(file.get(), bytes.data(), part, &written, nullptr) == FALSE) Raise();
    bytes.remove_prefix(written);
  }
}

}  // namespace kestro::adapters
