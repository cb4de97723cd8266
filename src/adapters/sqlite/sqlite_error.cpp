#include "adapters/sqlite/sqlite_error.h"

#include <string>

#include "base/runtime_error.h"

namespace kestro::adapters {

void RaiseDatabaseError(std::string_view description) {
  throw base::RuntimeError(base::kDatabaseError, std::string(description));
}

void RaiseEngineError(sqlite3* database, std::string_view action) {
  RaiseDatabaseError(std::string(action).append(": ").append(sqlite3_errmsg(database)));
}

}  // namespace kestro::adapters
