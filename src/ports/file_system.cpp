#include "ports/file_system.h"

#include <algorithm>

namespace kestro::ports {

std::string GetParentFolderName(std::string_view path) {
  const auto separator = path.find_last_of('\\');
  if (separator == std::string_view::npos) return {};
  const bool is_root = separator == 0 || path[separator - 1] == ':';
  return std::string(path.substr(0, is_root ? separator + 1 : separator));
}

std::string GetFileName(std::string_view path) {
  const auto separator = path.find_last_of('\\');
  return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string BuildPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && path.back() != '\\') path.push_back('\\');
  return path.append(name);
}

bool LeadsOut(std::string_view path) {
  int depth = 0;
  while (!path.empty()) {
    const auto end = std::min(path.find('\\'), path.size());
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (component.empty() || component == ".") continue;
    depth += component == ".." ? -1 : 1;
    if (depth < 0) return true;
  }
  return false;
}

}  // namespace kestro::ports
