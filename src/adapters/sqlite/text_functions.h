#pragma once

#include <sqlite3.h>

namespace kestro::adapters {

/// The SQL function ContainsText(text, part).
void ContainsText(sqlite3_context* context, int count, sqlite3_value** arguments);

/// Makes ContainsText and TextOrder known to the statements of a handle. Raises on failure.
void RegisterTextFunctions(sqlite3* database);

}  // namespace kestro::adapters
