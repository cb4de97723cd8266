#include "adapters/posix/user_folders.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0700;

std::string BelowHome(const char* variable, const char* folder) {
  std::string path = AbsolutePathFromEnvironment(variable);
  if (!path.empty()) return path;
  const std::string home = HomeFolder();
  return home.empty() ? home : home + folder;
}

}  // namespace

std::string AbsolutePathFromEnvironment(const char* name) {
  const char* const value = std::getenv(name);
  std::string path = value == nullptr ? "" : value;
  if (!path.starts_with('/')) return {};
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string HomeFolder() {
  std::string home = AbsolutePathFromEnvironment("HOME");
  if (!home.empty()) return home;
  const passwd* const account = ::getpwuid(::geteuid());
  return account == nullptr || account->pw_dir == nullptr ? "" : account->pw_dir;
}

std::string UserDataHome() { return BelowHome("XDG_DATA_HOME", "/.local/share"); }

std::string UserStateHome() { return BelowHome("XDG_STATE_HOME", "/.local/state"); }

std::string ExecutableFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) RaiseSystemError(error.value(), base::kFileNotFound);
  return program.parent_path().string();
}

void MakeFolders(const std::string& folder) {
  for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const std::string part = folder.substr(0, end);
    if (::mkdir(part.c_str(), kUserOnly) != 0 && errno != EEXIST && errno != EROFS && errno != EACCES) {
      RaiseSystemError(errno, base::kPathNotFound);
    }
    if (end == std::string::npos) break;
  }
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0) RaiseSystemError(errno, base::kPathNotFound);
  if (!S_ISDIR(status.st_mode)) RaiseSystemError(ENOTDIR, base::kPathNotFound);
}

}  // namespace kestro::adapters
