#include "adapters/sqlite/new_database_file.h"

#include <string>

#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/sqlite_handle.h"

namespace kestro::adapters {
namespace {

/// "KCTI": lets file tools tell a contacts database from other SQLite files.
constexpr int kApplicationId = 0x4B435449;

}  // namespace

void CreateDatabaseFile(const std::filesystem::path& path, int schema_version) {
  const auto absolute = std::filesystem::absolute(path);
  const auto name = EnginePath(absolute);
  if (std::filesystem::exists(absolute)) RaiseDatabaseError("File '" + name + "' exists already.");
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int result = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
  const HandlePointer database(opened);
  if (!database) RaiseDatabaseError("There is not enough memory to make a database.");
  CheckResult(result, opened, "Database '" + name + "' cannot be made");
  // Journals get the mode of the file.
  std::filesystem::permissions(absolute,
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  const auto settings =
      "PRAGMA page_size = 4096; PRAGMA encoding = 'UTF-8'; BEGIN; PRAGMA application_id = " +
      std::to_string(kApplicationId) + "; PRAGMA user_version = " + std::to_string(schema_version) +
      "; COMMIT";
  CheckResult(sqlite3_exec(opened, settings.c_str(), nullptr, nullptr, nullptr), opened,
              "Database '" + name + "' cannot be made");
}

}  // namespace kestro::adapters
