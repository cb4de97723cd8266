#pragma once

#include <chrono>
#include <string>

namespace kestro::adapters {

/// Renames a damaged file to NAME.damaged-YYYYMMDD-HHMMSS (local time), with a
/// number behind it when there is such a file already: nothing is overwritten.
/// Returns the new path. Raises what RaiseSystemError does; the file then stays
/// as it is.
std::string PutAside(const std::string& file, std::chrono::system_clock::time_point time);

}  // namespace kestro::adapters
