#include "adapters/win32/win32_growing_file.h"

#include "adapters/win32/plain_file.h"
#include "adapters/win32/system_error.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters {

std::uint64_t Win32GrowingFile::Open(const std::string& path) {
  Close();
  Handle file = OwnHandle(::CreateFileW(ToWide(path).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) RaiseSystemError(::GetLastError(), base::kPathNotFound);
  LARGE_INTEGER size{};
  const bool is_file =
      ::GetFileType(file.get()) == FILE_TYPE_DISK && ::GetFileSizeEx(file.get(), &size) != FALSE;
  if (!is_file) base::RaiseFileError(base::kPathAccessError, "not a file");
  file_ = std::move(file);
  return static_cast<std::uint64_t>(size.QuadPart);
}

// A full disk takes nothing of a line, as a rule; where it takes a piece, a broken line is the smaller harm.
void Win32GrowingFile::Append(std::string_view lines) { WriteAll(file_, lines); }

void Win32GrowingFile::Rename(const std::string& from, const std::string& to) {
  const bool done =
      ::MoveFileExW(ToWide(from).c_str(), ToWide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
  if (!done && ::GetLastError() != ERROR_FILE_NOT_FOUND) {
    RaiseSystemError(::GetLastError(), base::kPathNotFound);
  }
}

void Win32GrowingFile::MakeFolder(const std::string& folder) {
  ::CreateDirectoryW(ToWide(folder).c_str(), nullptr);  // what is wrong with it shows when the file is opened
}

}  // namespace kestro::adapters
