#include "adapters/win32/user_folders.h"

#include <windows.h>

#include <memory>
#include <shlobj.h>
#include <vector>

#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kShellFolders =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)";
constexpr std::string_view kAppData = "AppData";
constexpr std::string_view kOwnFolder = "\\KESTRO CTI";
constexpr std::size_t kMostCharacters = 32768;  // of a path

struct TaskMemory {
  void operator()(wchar_t* memory) const { ::CoTaskMemFree(memory); }
};

std::string KnownFolder(const KNOWNFOLDERID& id) {
  wchar_t* path = nullptr;
  const HRESULT result = ::SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &path);
  const std::unique_ptr<wchar_t, TaskMemory> owner(path);
  return SUCCEEDED(result) && path != nullptr ? ToUtf8(path) : std::string();
}

bool IsFolder(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(ToWide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::string ProgramFolder() {
  std::vector<wchar_t> path(kMostCharacters);
  const DWORD size = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring_view file(path.data(), size);
  const auto separator = file.find_last_of(L'\\');
  if (size == 0 || separator == std::wstring_view::npos) base::RaiseFileError(base::kFileNotFound);
  return ToUtf8(file.substr(0, separator));
}

std::string UserDataFolder(ports::SettingsStore& registry) {
  const auto stored = registry.QueryValue(kShellFolders, kAppData);
  if (stored && IsFolder(*stored)) return *stored;
  return KnownFolder(FOLDERID_RoamingAppData);
}

std::string LocalDataFolder() {
  const std::string folder = KnownFolder(FOLDERID_LocalAppData);
  return folder.empty() ? folder : folder + std::string(kOwnFolder);
}

}  // namespace kestro::adapters
