#pragma once

#include <filesystem>

namespace kestro::adapters {

/// Makes an empty database file that carries the version number of the schema it is going to get. Raises
/// when a file of that name exists or cannot be made; then no file is left behind by this call.
void CreateDatabaseFile(const std::filesystem::path& path, int schema_version);

}  // namespace kestro::adapters
