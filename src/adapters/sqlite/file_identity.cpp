#include "adapters/sqlite/file_identity.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace kestro::adapters {

#if defined(_WIN32)

std::optional<DatabaseFileIdentity> IdentityOf(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (error || !std::filesystem::exists(status)) return std::nullopt;
  return DatabaseFileIdentity{.mode = static_cast<std::uint32_t>(status.permissions())};
}

#else

std::optional<DatabaseFileIdentity> IdentityOf(const std::filesystem::path& path) {
  struct stat information {};
  if (stat(path.c_str(), &information) != 0) return std::nullopt;
  return DatabaseFileIdentity{information.st_dev, information.st_ino, information.st_mode};
}

#endif

}  // namespace kestro::adapters
