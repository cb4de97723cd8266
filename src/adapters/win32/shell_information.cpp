#include "adapters/win32/shell_information.h"

#include <windows.h>

#include <string>

namespace kestro::adapters {

std::int32_t Win32ShellInformation::FileVersionInfoSize(std::string_view file) {
  DWORD unused = 0;
  return static_cast<std::int32_t>(::GetFileVersionInfoSizeA(std::string(file).c_str(), &unused));
}

bool Win32ShellInformation::FileVersionInfo(std::string_view file, std::span<std::uint8_t> information) {
  return ::GetFileVersionInfoA(std::string(file).c_str(), 0, static_cast<DWORD>(information.size()),
                               information.data()) != FALSE;
}

std::optional<std::uint32_t> Win32ShellInformation::QueryRootBlock(
    std::span<const std::uint8_t> information) {
  void* block = nullptr;
  UINT size = 0;
  const BOOL found = ::VerQueryValueA(information.data(), "\\", &block, &size);
  if (found != TRUE || block == nullptr || size < sizeof(VS_FIXEDFILEINFO)) return std::nullopt;
  return static_cast<const VS_FIXEDFILEINFO*>(block)->dwFileVersionMS;
}

std::uint32_t Win32ShellInformation::GetVersionWord() { return ::GetVersion(); }

}  // namespace kestro::adapters
