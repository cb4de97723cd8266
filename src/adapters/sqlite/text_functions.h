#pragma once

#include <sqlite3.h>

namespace kestro::adapters {

/// Makes ContainsText and TextOrder known to the statements of a handle. Raises on failure.
void RegisterTextFunctions(sqlite3* database);

}  // namespace kestro::adapters
