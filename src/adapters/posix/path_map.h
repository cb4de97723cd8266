#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestro::adapters {

/// A place of the system's path space that lies in a native folder, for example
/// "C:\Data" in "/tmp/x/data".
struct PathMount {
  std::string system;
  std::string native;
};

/// Translates between the system's paths ("\" separators) and native ones ("/").
///
/// The longest mount that a path lies in or is wins (letter case counts, whole
/// components only). Outside of every mount a leading "\" is the native root and
/// a path without one is relative. "/" is taken for a separator in system paths
/// too, since users type native paths. Touches no disk.
class PathMap {
 public:
  PathMap() = default;
  explicit PathMap(std::vector<PathMount> mounts);

  /// Raises 76 for a path that has no native counterpart: a drive without a
  /// mount, ".." that leads out of a mount, a zero byte.
  [[nodiscard]] std::string ToNative(std::string_view system_path) const;
  /// Raises 76 for a native path with "\" in a name, which no system path can tell apart.
  [[nodiscard]] std::string ToSystem(std::string_view native_path) const;

 private:
  std::vector<PathMount> mounts_;
};

}  // namespace kestro::adapters
