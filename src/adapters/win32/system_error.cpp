#include "adapters/win32/system_error.h"

#include <windows.h>

#include <array>

#include "adapters/win32/wide_text.h"

namespace kestro::adapters {

std::string SystemErrorText(std::uint32_t error) {
  std::array<wchar_t, 512> buffer{};
  const DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      error, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::string text = ToUtf8({buffer.data(), size});
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '.')) text.pop_back();
  return text.empty() ? "error " + std::to_string(error) : text;
}

void RaiseSystemError(std::uint32_t error, std::int32_t number_when_missing) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      // For a file the missing folder is as good a reason for not finding it.
      base::RaiseFileError(number_when_missing);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      base::RaiseFileError(base::kFileAlreadyExists);
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      base::RaiseFileError(base::kPathAccessError);
    default:
      base::RaiseFileError(base::kPathAccessError, SystemErrorText(error));
  }
}

}  // namespace kestro::adapters
