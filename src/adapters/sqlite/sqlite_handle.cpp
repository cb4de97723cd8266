#include "adapters/sqlite/sqlite_handle.h"

#include <string>
#include <system_error>

#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/text_functions.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;

constexpr int kBusyTimeoutMs = 2000;
constexpr std::uintmax_t kSmallestPage = 512;

/// At rest the database is one file that can be copied as it is, hence the rollback journal. Sorting stays
/// in memory: no contact reaches a temporary folder. The page cache keeps its small default size, which is
/// the fastest for searches through the whole file.
constexpr const char* kSettings =
    "PRAGMA cell_size_check = ON;"
    "PRAGMA temp_store = MEMORY;"
    "PRAGMA cache_spill = OFF;"
    "PRAGMA synchronous = FULL;"
    "PRAGMA journal_mode = DELETE;"
    "SELECT COUNT(*) FROM sqlite_schema;";  // reads the file: the first to notice that it is no database

constexpr fs::perms kAnyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

/// Open flags for the file; raises when there is nothing to open. The permissions are looked at because
/// an administrator's process could write to a read-only file as well.
int CheckedOpenFlags(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) RaiseDatabaseError("There is no such file.");
  if (error) RaiseDatabaseError("The file cannot be reached: " + error.message());
  if (!fs::is_regular_file(status)) RaiseDatabaseError("It is not a file.");
  // To the engine a shorter file is a database without tables, free to be filled.
  if (fs::file_size(path, error) < kSmallestPage) RaiseDatabaseError("The file is no database.");
  const bool writable = (status.permissions() & kAnyWrite) != fs::perms::none;
  return SQLITE_OPEN_NOMUTEX | (writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
}

HandlePointer OpenFile(const fs::path& path) {
  const int flags = CheckedOpenFlags(path);
  const auto name = EnginePath(path);
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
  HandlePointer database(opened);  // also given when opening failed
  if (!database) RaiseDatabaseError("There is not enough memory to open a database.");
  CheckResult(result, database.get(), "The file cannot be opened");
  return database;
}

/// What a foreign file brings along is not trusted: no schema of it calls a function with side effects,
/// no statement of ours damages the file's structure.
void SetSafetyOptions(sqlite3* database) {
  struct Option {
    int name;
    int value;
  };
  constexpr Option kOptions[] = {
      {SQLITE_DBCONFIG_DEFENSIVE, 1},   {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      {SQLITE_DBCONFIG_ENABLE_FKEY, 1}, {SQLITE_DBCONFIG_DQS_DML, 0},
      {SQLITE_DBCONFIG_DQS_DDL, 0},     {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
  };
  for (const auto& [name, value] : kOptions) {
    CheckResult(sqlite3_db_config(database, name, value, nullptr), database, "The database cannot be set up");
  }
}

}  // namespace

std::string EnginePath(const fs::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

SqliteHandle::SqliteHandle(const fs::path& path) : database_(OpenFile(path)), statements_(get()) {
  sqlite3_extended_result_codes(get(), 1);
  sqlite3_busy_timeout(get(), kBusyTimeoutMs);
  SetSafetyOptions(get());
  RegisterTextFunctions(get());
  CheckResult(sqlite3_exec(get(), kSettings, nullptr, nullptr, nullptr), get(), "The file cannot be opened");
}

void SqliteHandle::Run(const char* statements) {
  CheckResult(sqlite3_exec(get(), statements, nullptr, nullptr, nullptr), get(), "The statement failed");
}

}  // namespace kestro::adapters
