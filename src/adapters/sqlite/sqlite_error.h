#pragma once

#include <string_view>

#include <sqlite3.h>

namespace kestro::adapters {

/// Raises a database error with this description.
[[noreturn]] void RaiseDatabaseError(std::string_view description);

/// Raises what failed on the handle last: `action` ("The statement failed"), then the engine's message.
[[noreturn]] void RaiseEngineError(sqlite3* database, std::string_view action);

/// RaiseEngineError unless the engine's result is success.
inline void CheckResult(int result, sqlite3* database, std::string_view action) {
  if (result != SQLITE_OK) RaiseEngineError(database, action);
}

}  // namespace kestro::adapters
