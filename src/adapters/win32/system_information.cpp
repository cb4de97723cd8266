#include "adapters/win32/system_information.h"

#include <windows.h>

#include <optional>
#include <shellapi.h>
#include <shlwapi.h>
#include <vector>

#include "adapters/win32/wide_text.h"

namespace kestro::adapters {
namespace {

constexpr const wchar_t* kToolKey = L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const wchar_t* kToolValue = L"PATH";
constexpr const wchar_t* kFolderKey = L"SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr const wchar_t* kFolderValue = L"MSINFO";
constexpr const wchar_t* kTool = L"\\MSINFO32.EXE";
constexpr INT_PTR kLargestFailure = 32;  // what ShellExecute returns

std::optional<std::wstring> MachineText(const wchar_t* key, const wchar_t* value) {
  DWORD size = 0;
  const auto read = [&](void* data) {
    return ::RegGetValueW(HKEY_LOCAL_MACHINE, key, value, RRF_RT_REG_SZ, nullptr, data, &size) ==
           ERROR_SUCCESS;
  };
  if (!read(nullptr) || size < sizeof(wchar_t)) return std::nullopt;
  std::vector<wchar_t> text(size / sizeof(wchar_t) + 1);
  if (!read(text.data())) return std::nullopt;
  return std::wstring(text.data());
}

bool IsFile(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Path of the tool that the registry names, if it is there.
std::optional<std::wstring> Tool() {
  if (auto path = MachineText(kToolKey, kToolValue); path && IsFile(*path)) return path;
  auto folder = MachineText(kFolderKey, kFolderValue);
  if (!folder) return std::nullopt;
  while (!folder->empty() && folder->back() == L'\\') folder->pop_back();
  const std::wstring path = *folder + kTool;
  return IsFile(path) ? std::optional(path) : std::nullopt;
}

template <class Function>
Function FunctionOf(const wchar_t* library, const char* name) {
  const HMODULE module = ::GetModuleHandleW(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(::GetProcAddress(module, name)));
}

std::string Dotted(DWORD major, DWORD minor) { return std::to_string(major) + "." + std::to_string(minor); }

/// The version that the system would rather not tell programs it does not know.
std::string SystemVersion() {
  using VersionFunction = LONG(WINAPI*)(OSVERSIONINFOW*);
  const auto version_of = FunctionOf<VersionFunction>(L"ntdll.dll", "RtlGetVersion");
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof(version);
  if (version_of == nullptr || version_of(&version) != 0) return {};
  return "Windows " + Dotted(version.dwMajorVersion, version.dwMinorVersion) + " (build " +
         std::to_string(version.dwBuildNumber) + ")";
}

std::string ControlsVersion() {
  const auto version_of = FunctionOf<DLLGETVERSIONPROC>(L"comctl32.dll", "DllGetVersion");
  DLLVERSIONINFO version{};
  version.cbSize = sizeof(version);
  if (version_of == nullptr || FAILED(version_of(&version))) return {};
  return "Windows controls " + Dotted(version.dwMajorVersion, version.dwMinorVersion);
}

}  // namespace

bool Win32SystemInformation::StartTool() {
  const auto tool = Tool();
  if (!tool) return false;
  const HINSTANCE result = ::ShellExecuteW(nullptr, L"open", tool->c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(result) > kLargestFailure;
}

ports::SystemInformation Win32SystemInformation::Read() {
  return {ControlsVersion(), database_engine_, SystemVersion(), {}};
}

}  // namespace kestro::adapters
