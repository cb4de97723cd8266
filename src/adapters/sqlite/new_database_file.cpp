#include "adapters/sqlite/new_database_file.h"

#include "adapters/sqlite/jet_error.h"
#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "jet/database.h"

namespace kestro::adapters {

void CreateDatabaseFile(jet::FileLayer& files, const std::filesystem::path& path) {
  const auto name = EnginePath(std::filesystem::absolute(path));
  try {
    jet::Database::Create(files, name);
  } catch (const jet::Error& error) {
    RaiseDatabaseError("Database '" + name + "' cannot be made: " + Describe(error));
  }
}

}  // namespace kestro::adapters
