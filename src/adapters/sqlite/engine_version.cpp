#include "adapters/sqlite/engine_version.h"

#include <sqlite3.h>

namespace kestro::adapters {

std::string DatabaseEngineVersion() { return std::string("SQLite ") + sqlite3_libversion(); }

}  // namespace kestro::adapters
