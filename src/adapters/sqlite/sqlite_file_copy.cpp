#include "adapters/sqlite/sqlite_file_copy.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "adapters/sqlite/jet_module.h"
#include "adapters/sqlite/jet_session.h"
#include "adapters/sqlite/jet_table.h"
#include "adapters/sqlite/jet_values.h"
#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/valid_text.h"
#include "base/text.h"
#include "contacts/schema.h"
#include "contacts/search_hash.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kFailed = "The database of an earlier version cannot be converted";
constexpr int kBusyTimeoutMs = 2000;
constexpr const char* kRowsAtOnce = "20000";  // in one transaction: bounds the memory

void Run(sqlite3* connection, const std::string& statements) {
  CheckResult(sqlite3_exec(connection, statements.c_str(), nullptr, nullptr, nullptr), connection, kFailed);
}

class Statement {
 public:
  Statement(sqlite3* connection, const std::string& text) : connection_(connection) {
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v2(connection, text.c_str(), -1, &prepared, nullptr);
    statement_.reset(prepared);
    CheckResult(result, connection, kFailed);
  }
  void Bind(int position, std::int64_t value) {
    CheckResult(sqlite3_bind_int64(statement_.get(), position, value), connection_, kFailed);
  }
  /// False behind the last row.
  bool Step() {
    const int result = sqlite3_step(statement_.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) RaiseEngineError(connection_, kFailed);
    return result == SQLITE_ROW;
  }
  [[nodiscard]] sqlite3_stmt* get() const { return statement_.get(); }

 private:
  sqlite3* connection_;
  StatementPointer statement_;
};

/// The whole number that a query gives; nothing for null and for no row.
std::optional<std::int64_t> Number(sqlite3* connection, const std::string& query) {
  Statement statement(connection, query);
  if (!statement.Step() || sqlite3_column_type(statement.get(), 0) == SQLITE_NULL) return std::nullopt;
  return sqlite3_column_int64(statement.get(), 0);
}

/// StorableText(text): the text as the new file takes it.
void StorableText(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return;
  try {
    const std::string text = ValidText(TextOf(arguments[0]));
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

/// StoredHash(search form): what is stored beside it.
void StoredHash(sqlite3_context* context, int, sqlite3_value** arguments) {
  const std::int32_t hash = contacts::SearchHash(TextOf(arguments[0]));
  if (hash != 0) sqlite3_result_int(context, hash);
}

void AddFunction(sqlite3* connection, const char* name,
                 void (*function)(sqlite3_context*, int, sqlite3_value**)) {
  CheckResult(sqlite3_create_function_v2(connection, name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                         function, nullptr, nullptr, nullptr),
              connection, kFailed);
}

/// What one table's statements are made of.
struct Columns {
  std::string names;    // in the new file
  std::string sources;  // over the original
  std::string order;    // of the selection's columns, the same rows first in both files
};

bool HasColumn(sqlite3* connection, const std::string& table, const std::string& column) {
  const std::string query = "SELECT COUNT(*) FROM pragma_table_info('" + base::ReplaceAll(table, "'", "''") +
                            "', 'old') WHERE name = '" + base::ReplaceAll(column, "'", "''") + "'";
  return Number(connection, query) == 1;
}

/// Empty when the original does not have the column.
std::string SourceOf(sqlite3* connection, const std::string& table, const jet::Column& column) {
  constexpr std::string_view kHash = "SearchHash";
  if (column.name.starts_with(kHash))
    return "StoredHash(SearchPhone" + column.name.substr(kHash.size()) + ")";
  if (!HasColumn(connection, table, column.name)) return {};
  return column.IsText() ? "StorableText(" + QuotedName(column.name) + ")" : QuotedName(column.name);
}

Columns ColumnsOf(sqlite3* connection, const jet::Table& table) {
  Columns columns;
  int position = 0;
  for (const jet::Column& column : table.columns()) {
    const std::string source = SourceOf(connection, table.name(), column);
    if (source.empty()) continue;
    const std::string_view comma = ++position == 1 ? "" : ", ";
    columns.names.append(comma).append(QuotedName(column.name));
    columns.sources.append(comma).append(source);
    columns.order.append(comma).append(std::to_string(position)).append(" COLLATE BINARY");
  }
  return columns;
}

void CopyRows(sqlite3* connection, const std::string& table, const Columns& columns) {
  Statement last(connection, "SELECT MAX(rowid) FROM (SELECT rowid FROM old." + table +
                                 " WHERE rowid > ? ORDER BY rowid LIMIT " + kRowsAtOnce + ")");
  Statement insert(connection, "INSERT INTO main." + table + " (" + columns.names + ") SELECT " +
                                   columns.sources + " FROM old." + table +
                                   " WHERE rowid > ? AND rowid <= ? ORDER BY rowid");
  auto behind = Number(connection, "SELECT MIN(rowid) - 1 FROM old." + table);
  while (behind) {
    last.Bind(1, *behind);
    if (!last.Step() || sqlite3_column_type(last.get(), 0) == SQLITE_NULL) return;
    const std::int64_t end = sqlite3_column_int64(last.get(), 0);
    sqlite3_reset(last.get());
    insert.Bind(1, *behind);
    insert.Bind(2, end);
    insert.Step();
    sqlite3_reset(insert.get());
    behind = end;
  }
}

bool SameValue(sqlite3_stmt* left, sqlite3_stmt* right, int column) {
  const int type = sqlite3_column_type(left, column);
  if (type != sqlite3_column_type(right, column)) return false;
  if (type == SQLITE_NULL) return true;
  if (type == SQLITE_INTEGER) {
    return sqlite3_column_int64(left, column) == sqlite3_column_int64(right, column);
  }
  return TextOf(sqlite3_column_value(left, column)) == TextOf(sqlite3_column_value(right, column));
}

bool SameRow(sqlite3_stmt* left, sqlite3_stmt* right) {
  for (int column = 0; column < sqlite3_column_count(left); ++column) {
    if (!SameValue(left, right, column)) return false;
  }
  return true;
}

void CompareRows(sqlite3* connection, const std::string& table, const Columns& columns) {
  Statement old_rows(connection,
                     "SELECT " + columns.sources + " FROM old." + table + " ORDER BY " + columns.order);
  Statement new_rows(connection,
                     "SELECT " + columns.names + " FROM main." + table + " ORDER BY " + columns.order);
  for (;;) {
    const bool more = old_rows.Step();
    if (more != new_rows.Step() || (more && !SameRow(old_rows.get(), new_rows.get()))) {
      RaiseDatabaseError(std::string(kFailed) + ": table " + table + " would not be the same.");
    }
    if (!more) return;
  }
}

/// Uses up the numbers of deleted rows: a key that was given once is never given again.
void CarryLastKey(sqlite3* connection, const JetTable& table, const std::string& name) {
  if (!table.has_key()) return;
  const std::string key = QuotedName(table.table().columns()[table.key_column()].name);
  const auto last =
      Number(connection, "SELECT seq FROM old.sqlite_sequence WHERE name = '" + table.table().name() +
                             "' AND seq > (SELECT COALESCE(MAX(" + key + "), 0) FROM main." + name + ")");
  if (!last) return;
  std::string names = key;
  std::string values = std::to_string(*last);
  for (const jet::Column& column : table.table().columns()) {
    if (!column.required || column.auto_number) continue;
    names.append(", ").append(QuotedName(column.name));
    values += column.IsText() ? ", ''" : ", 0";
  }
  Run(connection, "BEGIN; INSERT INTO main." + name + " (" + names + ") VALUES (" + values +
                      "); DELETE FROM main." + name + " WHERE " + key + " = " + std::to_string(*last) +
                      "; COMMIT");
}

void CopyTable(sqlite3* connection, const std::shared_ptr<JetSession>& session, const std::string& name) {
  const JetTable table(session, session->database().OpenTable(name));
  const std::string quoted = QuotedName(name);
  const Columns columns = ColumnsOf(connection, table.table());
  CopyRows(connection, quoted, columns);
  CompareRows(connection, quoted, columns);
  CarryLastKey(connection, table, quoted);
}

/// What a foreign file brings along is not trusted: no schema of it calls a function with side effects.
void SetSafetyOptions(sqlite3* connection) {
  for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER}) {
    CheckResult(sqlite3_db_config(connection, option, 0, nullptr), connection, kFailed);
  }
}

}  // namespace

SqliteFileCopy::SqliteFileCopy(const std::filesystem::path& path) : connection_(OpenConnection()) {
  sqlite3* const connection = connection_.get();
  sqlite3_busy_timeout(connection, kBusyTimeoutMs);
  SetSafetyOptions(connection);
  Run(connection, "ATTACH '" + base::ReplaceAll(EnginePath(path), "'", "''") + "' AS old");
  // In the exclusive mode the lock stays until the connection is closed.
  Run(connection,
      "PRAGMA old.cell_size_check = ON; PRAGMA old.locking_mode = EXCLUSIVE; PRAGMA old.journal_mode = "
      "DELETE;"
      "BEGIN EXCLUSIVE; SELECT COUNT(*) FROM old.sqlite_schema; COMMIT");
}

void SqliteFileCopy::To(jet::FileLayer& files, const std::string& path) {
  sqlite3* const connection = connection_.get();
  if (!HasColumn(connection, "Contact", "id_Contact"))
    RaiseDatabaseError("The file is no contacts database.");
  AddFunction(connection, "StorableText", StorableText);
  AddFunction(connection, "StoredHash", StoredHash);
  jet::Database::Create(files, path);
  const auto session =
      std::make_shared<JetSession>(jet::Database::Open(files, path, jet::OpenMode::kReadWrite));
  AttachJetTables(connection, session);
  Run(connection, "BEGIN");
  for (const auto statement : contacts::TableStatements()) Run(connection, std::string(statement));
  Run(connection, "COMMIT");
  for (const std::string& table : session->database().Tables()) {
    if (Number(connection,
               "SELECT 1 FROM old.sqlite_schema WHERE type = 'table' AND name = '" + table + "'")) {
      CopyTable(connection, session, table);
    }
  }
}

}  // namespace kestro::adapters
