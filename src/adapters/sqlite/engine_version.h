#pragma once

#include <string>

namespace kestro::adapters {

/// The engine that runs: "SQLite 3.40.1".
[[nodiscard]] std::string DatabaseEngineVersion();

}  // namespace kestro::adapters
