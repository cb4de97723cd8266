#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>

#include "adapters/jetfile/system_file_layer.h"
#include "jet/error.h"

namespace kestro::adapters {
namespace {

using jet::Error;
using jet::ErrorKind;
using jet::FileMode;

constexpr DWORD kMostAtOnce = 1U << 20;

[[noreturn]] void Fail(const std::string& what, DWORD number, ErrorKind kind = ErrorKind::kFileSystem) {
  throw Error(kind, what + " (Windows error " + std::to_string(number) + ")");
}

std::wstring Wide(const std::string& path) {
  const int size = static_cast<int>(path.size());
  const int count = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path.data(), size, nullptr, 0);
  if (count <= 0) throw Error(ErrorKind::kFileSystem, "The path is no valid UTF-8");
  std::wstring wide(static_cast<std::size_t>(count), L'\0');
  ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path.data(), size, wide.data(), count);
  return wide;
}

OVERLAPPED At(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFFU);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

class Win32File : public jet::File {
 public:
  Win32File(HANDLE handle, std::string path) : handle_(handle), path_(std::move(path)) {}
  ~Win32File() override { ::CloseHandle(handle_); }
  Win32File(const Win32File&) = delete;
  Win32File& operator=(const Win32File&) = delete;

  std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      OVERLAPPED place = At(offset + done);
      const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, kMostAtOnce));
      DWORD count = 0;
      if (!::ReadFile(handle_, bytes.data() + done, wanted, &count, &place)) {
        const DWORD number = ::GetLastError();
        if (number == ERROR_HANDLE_EOF) break;
        Fail(path_ + " cannot be read", number);
      }
      if (count == 0) break;
      done += count;
    }
    return done;
  }

  void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      OVERLAPPED place = At(offset + done);
      const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, kMostAtOnce));
      DWORD count = 0;
      if (!::WriteFile(handle_, bytes.data() + done, wanted, &count, &place)) {
        Fail(path_ + " cannot be written", ::GetLastError());
      }
      done += count;
    }
  }

  std::uint64_t Size() override {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(handle_, &size)) Fail(path_ + " has no size", ::GetLastError());
    return static_cast<std::uint64_t>(size.QuadPart);
  }

  void Truncate(std::uint64_t size) override {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    if (!::SetFilePointerEx(handle_, end, nullptr, FILE_BEGIN) || !::SetEndOfFile(handle_)) {
      Fail(path_ + " cannot be cut", ::GetLastError());
    }
  }

  void Sync() override {
    if (!::FlushFileBuffers(handle_)) Fail(path_ + " cannot be brought to the disk", ::GetLastError());
  }

 private:
  HANDLE handle_;
  std::string path_;
};

ErrorKind KindOf(DWORD number, FileMode mode) {
  switch (number) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return ErrorKind::kNotFound;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return ErrorKind::kBusy;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return mode == FileMode::kReadWrite ? ErrorKind::kReadOnly : ErrorKind::kFileSystem;
    default:
      return ErrorKind::kFileSystem;
  }
}

}  // namespace

std::unique_ptr<jet::File> SystemFileLayer::Open(const std::string& path, FileMode mode) {
  // No sharing of a file opened for writing is the lock.
  const bool reading = mode == FileMode::kRead;
  const HANDLE handle =
      ::CreateFileW(Wide(path).c_str(), reading ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE,
                    reading ? FILE_SHARE_READ : 0, nullptr,
                    mode == FileMode::kCreate ? CREATE_NEW : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  const DWORD number = ::GetLastError();
  if (handle == INVALID_HANDLE_VALUE) Fail(path + " cannot be opened", number, KindOf(number, mode));
  return std::make_unique<Win32File>(handle, path);
}

bool SystemFileLayer::Exists(const std::string& path) {
  if (::GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES) return true;
  const DWORD number = ::GetLastError();
  if (number == ERROR_FILE_NOT_FOUND || number == ERROR_PATH_NOT_FOUND) return false;
  Fail(path + " cannot be looked at", number);
}

void SystemFileLayer::Remove(const std::string& path) {
  if (::DeleteFileW(Wide(path).c_str())) return;
  const DWORD number = ::GetLastError();
  if (number != ERROR_FILE_NOT_FOUND) Fail(path + " cannot be removed", number);
}

// The file system journals names by itself; there is no call for a folder.
void SystemFileLayer::SyncFolder(const std::string&) {}

}  // namespace kestro::adapters
