#include "ports/file_system.h"

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

}  // namespace kestro::ports
