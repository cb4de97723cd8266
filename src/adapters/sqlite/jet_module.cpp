#include "adapters/sqlite/jet_module.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/jet_cursor.h"
#include "adapters/sqlite/jet_design.h"
#include "adapters/sqlite/jet_error.h"
#include "adapters/sqlite/jet_plan.h"
#include "adapters/sqlite/jet_table.h"
#include "adapters/sqlite/jet_update.h"
#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/text_functions.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

using SqlFunction = void (*)(sqlite3_context*, int, sqlite3_value**);
using SharedSession = std::shared_ptr<JetSession>;

constexpr const char* kModule = "jet";
constexpr std::string_view kReservedPrefix = "sqlite_";
/// What SQLite hands to xCreate before the definitions: module, schema, table.
constexpr std::size_t kNamesBeforeDefinitions = 3;

JetTable& Table(sqlite3_vtab* table) { return *static_cast<JetTable*>(table); }
JetCursor& Cursor(sqlite3_vtab_cursor* cursor) { return *static_cast<JetCursor*>(cursor); }

template <class Work>
int ForTable(sqlite3_vtab* table, Work work) {
  return Guarded(table->zErrMsg, std::move(work));
}

void Declare(sqlite3* connection, const JetTable& table) {
  const int result = sqlite3_declare_vtab(connection, table.Declaration().c_str());
  if (result != SQLITE_OK) throw jet::Error(jet::ErrorKind::kValue, sqlite3_errmsg(connection));
  CheckResult(sqlite3_vtab_config(connection, SQLITE_VTAB_CONSTRAINT_SUPPORT, 1), connection,
              "The table cannot be set up");
}

std::shared_ptr<jet::Table> OpenOrCreate(JetSession& session, std::span<const std::string_view> names) {
  const std::string_view name = names[kNamesBeforeDefinitions - 1];
  const auto definitions = names.subspan(kNamesBeforeDefinitions);
  if (definitions.empty()) return session.database().OpenTable(name);
  const jet::TableDesign design = ParseTableDesign(name, definitions);
  session.Begin();  // SQLite ends it as if the new table had taken part from the start
  return session.database().CreateTable(design);
}

int Create(sqlite3* connection, void* data, int count, const char* const* arguments, sqlite3_vtab** table,
           char** message) {
  return Guarded(*message, [&] {
    const SharedSession& session = *static_cast<const SharedSession*>(data);
    const std::vector<std::string_view> names(arguments, arguments + count);
    auto made = std::make_unique<JetTable>(session, OpenOrCreate(*session, names));
    Declare(connection, *made);
    *table = made.release();
  });
}

/// After a schema change that was taken back.
int Connect(sqlite3* connection, void* data, int count, const char* const* arguments, sqlite3_vtab** table,
            char** message) {
  return Create(connection, data, std::min(count, static_cast<int>(kNamesBeforeDefinitions)), arguments,
                table, message);
}

int BestIndex(sqlite3_vtab* table, sqlite3_index_info* info) {
  return ForTable(table, [&] { ChoosePlan(Table(table), *info); });
}

int Disconnect(sqlite3_vtab* table) {
  delete &Table(table);
  return SQLITE_OK;
}

/// DROP TABLE: SQLite does not make the removal part of the transaction.
int Destroy(sqlite3_vtab* /*table*/) { return SQLITE_LOCKED; }

int Open(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor) {
  return ForTable(table, [&] { *cursor = std::make_unique<JetCursor>(Table(table)).release(); });
}

int Close(sqlite3_vtab_cursor* cursor) {
  delete &Cursor(cursor);
  return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* cursor, int number, const char* text, int count, sqlite3_value** values) {
  return ForTable(cursor->pVtab, [&] {
    Cursor(cursor).Start(JetPlan::FromPacked(number, text == nullptr ? "" : text),
                         {values, static_cast<std::size_t>(count)});
  });
}

int Next(sqlite3_vtab_cursor* cursor) {
  return ForTable(cursor->pVtab, [&] { Cursor(cursor).Next(); });
}

int AtEnd(sqlite3_vtab_cursor* cursor) { return Cursor(cursor).at_end() ? 1 : 0; }

int Column(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
  // An UPDATE asks for columns that it leaves alone as well.
  if (sqlite3_vtab_nochange(context) != 0) return SQLITE_OK;
  return ForTable(cursor->pVtab, [&] { Cursor(cursor).Column(context, static_cast<std::size_t>(column)); });
}

int Rowid(sqlite3_vtab_cursor* cursor, sqlite3_int64* rowid) {
  return ForTable(cursor->pVtab, [&] { *rowid = Cursor(cursor).Rowid(); });
}

int Update(sqlite3_vtab* table, int count, sqlite3_value** arguments, sqlite3_int64* rowid) {
  return ForTable(table, [&] {
    ChangeRow(Table(table), {arguments, static_cast<std::size_t>(count)}, *rowid);
  });
}

/// ContainsText over a column is a condition that the table can test itself.
int FindFunction(sqlite3_vtab* /*table*/, int count, const char* name, SqlFunction* function, void** data) {
  if (count != 2 || !base::EqualIgnoringCase(name, "ContainsText")) return 0;
  *function = ContainsText;
  *data = nullptr;
  return kContainsTextConstraint;
}

int Begin(sqlite3_vtab* table) {
  return ForTable(table, [&] { Table(table).session().Begin(); });
}

/// The file's commit belongs here: it may fail, xCommit may not.
int Sync(sqlite3_vtab* table) {
  return ForTable(table, [&] { Table(table).session().Commit(); });
}

int Commit(sqlite3_vtab* /*table*/) { return SQLITE_OK; }

int Rollback(sqlite3_vtab* table) {
  return ForTable(table, [&] { Table(table).session().Rollback(); });
}

int Savepoint(sqlite3_vtab* table, int number) {
  return ForTable(table, [&] { Table(table).session().BeginSavepoint(number); });
}

int Release(sqlite3_vtab* table, int number) {
  return ForTable(table, [&] { Table(table).session().ReleaseSavepoint(number); });
}

int RollbackTo(sqlite3_vtab* table, int number) {
  return ForTable(table, [&] { Table(table).session().RollbackToSavepoint(number); });
}

sqlite3_module MakeModule() {
  sqlite3_module module{};
  module.iVersion = 2;
  module.xCreate = Create;
  module.xConnect = Connect;
  module.xBestIndex = BestIndex;
  module.xDisconnect = Disconnect;
  module.xDestroy = Destroy;
  module.xOpen = Open;
  module.xClose = Close;
  module.xFilter = Filter;
  module.xNext = Next;
  module.xEof = AtEnd;
  module.xColumn = Column;
  module.xRowid = Rowid;
  module.xUpdate = Update;
  module.xBegin = Begin;
  module.xSync = Sync;
  module.xCommit = Commit;
  module.xRollback = Rollback;
  module.xFindFunction = FindFunction;
  module.xSavepoint = Savepoint;
  module.xRelease = Release;
  module.xRollbackTo = RollbackTo;
  return module;
}

void DeleteSession(void* session) { delete static_cast<SharedSession*>(session); }

bool IsReserved(std::string_view name) {
  return base::EqualIgnoringCase(name.substr(0, kReservedPrefix.size()), kReservedPrefix);
}

}  // namespace

void AttachJetTables(sqlite3* connection, const SharedSession& session) {
  static const sqlite3_module kFunctions = MakeModule();
  // Deleted by SQLite, also when this fails.
  auto shared = std::make_unique<SharedSession>(session);
  CheckResult(sqlite3_create_module_v2(connection, kModule, &kFunctions, shared.release(), DeleteSession),
              connection, "The tables cannot be set up");
  for (const std::string& name : session->database().Tables()) {
    if (IsReserved(name)) continue;
    const std::string statement = "CREATE VIRTUAL TABLE " + QuotedName(name) + " USING " + kModule;
    CheckResult(sqlite3_exec(connection, statement.c_str(), nullptr, nullptr, nullptr), connection,
                "Table '" + name + "' cannot be read");
  }
}

}  // namespace kestro::adapters
