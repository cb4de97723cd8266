#include "adapters/sqlite/sqlite_handle.h"

#include <string_view>
#include <system_error>
#include <utility>

#include "adapters/sqlite/jet_error.h"
#include "adapters/sqlite/jet_module.h"
#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/sqlite_file_conversion.h"
#include "adapters/sqlite/text_functions.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kOldReadOnly =
    "The database of an earlier version must be converted, which its permissions do not allow.";
constexpr fs::perms kAnyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

/// How to open the file; raises when there is nothing to open. The permissions are looked at because an
/// administrator's process could write to a read-only file as well.
jet::OpenMode CheckedOpenMode(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) RaiseDatabaseError("There is no such file.");
  if (error) RaiseDatabaseError("The file cannot be reached: " + error.message());
  if (!fs::is_regular_file(status)) RaiseDatabaseError("It is not a file.");
  const bool writable = (status.permissions() & kAnyWrite) != fs::perms::none;
  return writable ? jet::OpenMode::kReadWrite : jet::OpenMode::kReadOnly;
}

std::shared_ptr<JetSession> OpenFile(jet::FileLayer& files, const fs::path& path) {
  const jet::OpenMode mode = CheckedOpenMode(path);
  if (IsSqliteFile(path)) {
    if (mode == jet::OpenMode::kReadOnly) RaiseDatabaseError(std::string(kOldReadOnly));
    ConvertSqliteFile(files, path);
  }
  try {
    return std::make_shared<JetSession>(jet::Database::Open(files, EnginePath(path), mode));
  } catch (const jet::Error& error) {
    RaiseDatabaseError(Describe(error));
  }
}

/// Sorting stays in memory: no contact reaches a temporary folder. Names in double quotes are names only.
void SetOptions(sqlite3* connection) {
  for (const int option : {SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL}) {
    CheckResult(sqlite3_db_config(connection, option, 0, nullptr), connection,
                "The database cannot be set up");
  }
  CheckResult(sqlite3_exec(connection, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr), connection,
              "The database cannot be set up");
}

}  // namespace

std::string EnginePath(const fs::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

HandlePointer OpenConnection() {
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  const int result = sqlite3_open_v2(":memory:", &opened, flags, nullptr);
  HandlePointer connection(opened);  // also given when opening failed
  if (!connection) RaiseDatabaseError("There is not enough memory to open a database.");
  CheckResult(result, opened, "The database cannot be set up");
  sqlite3_extended_result_codes(opened, 1);
  SetOptions(opened);
  RegisterTextFunctions(opened);
  return connection;
}

SqliteHandle::SqliteHandle(jet::FileLayer& files, const fs::path& path)
    : session_(OpenFile(files, path)), connection_(OpenConnection()), statements_(get()) {
  try {
    AttachJetTables(get(), session_);
  } catch (const jet::Error& error) {
    RaiseDatabaseError(Describe(error));
  }
}

void SqliteHandle::Run(const char* statements) {
  CheckResult(sqlite3_exec(get(), statements, nullptr, nullptr, nullptr), get(), "The statement failed");
}

}  // namespace kestro::adapters
