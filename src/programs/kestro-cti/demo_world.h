#pragma once

#include <string>

namespace kestro::programs {

/// Where the demonstration keeps its data: the user's own contacts and settings
/// are never touched by it. All paths are native.
struct DemoWorld {
  std::string user_data_folder;
  std::string database_file;
};

/// Name of the only line of the demonstration's exchange.
inline constexpr const char* kDemoLine = "EXT 101";

/// Makes the demonstration's folder and, when it is not there yet, its contacts
/// database with a sample address book. An address book that was changed in an
/// earlier run stays as it is. Raises base::RuntimeError.
[[nodiscard]] DemoWorld PrepareDemoWorld(const std::string& program_folder);

}  // namespace kestro::programs
