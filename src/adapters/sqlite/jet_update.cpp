#include "adapters/sqlite/jet_update.h"

#include <vector>

#include "adapters/sqlite/jet_values.h"
#include "jet/error.h"

namespace kestro::adapters {
namespace {

bool IsNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

void Delete(const JetTable& table, sqlite3_value* rowid) {
  if (const auto row = table.FindRow(sqlite3_value_int64(rowid))) table.table().Delete(*row);
}

sqlite3_int64 Insert(const JetTable& table, sqlite3_value* rowid, std::span<sqlite3_value*> columns) {
  std::vector<jet::Value> values;
  values.reserve(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const bool by_rowid = table.has_key() && i == table.key_column() && IsNull(columns[i]) && !IsNull(rowid);
    values.push_back(ToStored(by_rowid ? rowid : columns[i], table.table().columns()[i]));
  }
  const jet::InsertResult inserted = table.table().Insert(values);
  if (!table.has_key()) return inserted.id.ToNumber();
  const auto* const given = std::get_if<std::int64_t>(&values[table.key_column()]);
  return given != nullptr ? *given : inserted.auto_number.value_or(0);
}

void Update(const JetTable& table, std::int64_t old_rowid, sqlite3_value* new_rowid,
            std::span<sqlite3_value*> columns) {
  std::vector<jet::Assignment> assignments;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (sqlite3_value_nochange(columns[i]) != 0) continue;
    const bool key = table.has_key() && i == table.key_column();
    if (key && sqlite3_value_type(columns[i]) == SQLITE_INTEGER &&
        sqlite3_value_int64(columns[i]) == old_rowid) {
      continue;
    }
    assignments.push_back({i, ToStored(columns[i], table.table().columns()[i])});
  }
  if (sqlite3_value_int64(new_rowid) != old_rowid) {
    if (!table.has_key()) throw jet::Error(jet::ErrorKind::kValue, "This table's rowids cannot be changed.");
    assignments.push_back(
        {table.key_column(), ToStored(new_rowid, table.table().columns()[table.key_column()])});
  }
  const auto row = table.FindRow(old_rowid);
  if (row && !assignments.empty()) table.table().Update(*row, assignments);
}

}  // namespace

void ChangeRow(const JetTable& table, std::span<sqlite3_value*> arguments, sqlite3_int64& rowid) {
  table.session().NoteChange();
  if (arguments.size() == 1) return Delete(table, arguments[0]);
  const auto columns = arguments.subspan(2);
  if (IsNull(arguments[0])) {
    rowid = Insert(table, arguments[1], columns);
  } else {
    Update(table, sqlite3_value_int64(arguments[0]), arguments[1], columns);
  }
}

}  // namespace kestro::adapters
