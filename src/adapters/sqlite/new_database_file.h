#pragma once

#include <filesystem>

#include "jet/file_layer.h"

namespace kestro::adapters {

/// Makes an empty database file that only its owner may read and write. Raises when a file of that name
/// exists or cannot be made; then no file is left behind by this call.
void CreateDatabaseFile(jet::FileLayer& files, const std::filesystem::path& path);

}  // namespace kestro::adapters
