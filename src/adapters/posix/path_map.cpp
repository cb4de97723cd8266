#include "adapters/posix/path_map.h"

#include <algorithm>
#include <string>

#include "base/runtime_error.h"
#include "ports/file_system.h"

namespace kestro::adapters {
namespace {

void RemoveTrailing(std::string& path, char separator) {
  while (!path.empty() && path.back() == separator) path.pop_back();
}

bool LiesIn(std::string_view path, std::string_view folder, char separator) {
  if (!path.starts_with(folder)) return false;
  if (path.size() == folder.size()) return !folder.empty();  // an empty path is not the root
  return path[folder.size()] == separator;
}

/// The mount whose `side` is the longest prefix of the path; null when there is none.
const PathMount* LongestMount(const std::vector<PathMount>& mounts, std::string PathMount::*side,
                              std::string_view path, char separator) {
  const PathMount* longest = nullptr;
  for (const PathMount& mount : mounts) {
    if (!LiesIn(path, mount.*side, separator)) continue;
    if (longest == nullptr || (mount.*side).size() > (longest->*side).size()) longest = &mount;
  }
  return longest;
}

bool HasDrive(std::string_view path) {
  const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return path.size() >= 2 && path[1] == ':' && is_letter(path[0]);
}

}  // namespace

PathMap::PathMap(std::vector<PathMount> mounts) : mounts_(std::move(mounts)) {
  for (PathMount& mount : mounts_) {
    RemoveTrailing(mount.system, '\\');
    RemoveTrailing(mount.native, '/');
  }
}

std::string PathMap::ToNative(std::string_view system_path) const {
  if (system_path.find('\0') != std::string_view::npos) base::RaiseFileError(base::kPathNotFound);
  std::string path(system_path);
  std::replace(path.begin(), path.end(), '/', '\\');
  const PathMount* const mount = LongestMount(mounts_, &PathMount::system, path, '\\');
  if (mount == nullptr && HasDrive(path)) base::RaiseFileError(base::kPathNotFound);
  if (mount != nullptr) path.erase(0, mount->system.size());
  if (mount != nullptr && ports::LeadsOut(path)) base::RaiseFileError(base::kPathNotFound);
  std::replace(path.begin(), path.end(), '\\', '/');
  if (mount == nullptr) return path;
  const std::string native = mount->native + path;
  return native.empty() ? "/" : native;
}

std::string PathMap::ToSystem(std::string_view native_path) const {
  if (native_path.find('\\') != std::string_view::npos) base::RaiseFileError(base::kPathNotFound);
  std::string path(native_path);
  const PathMount* const mount = LongestMount(mounts_, &PathMount::native, path, '/');
  if (mount != nullptr) path.erase(0, mount->native.size());
  std::replace(path.begin(), path.end(), '/', '\\');
  return mount == nullptr ? path : mount->system + path;
}

}  // namespace kestro::adapters
