#include "adapters/sqlite/jet_table.h"

#include "adapters/sqlite/jet_values.h"
#include "base/text.h"

namespace kestro::adapters {

JetTable::JetTable(std::shared_ptr<JetSession> session, std::shared_ptr<jet::Table> table)
    : sqlite3_vtab{}, session_(std::move(session)), table_(std::move(table)) {
  key_index_ = table_->SearchablePrimaryKey();
  if (key_index_) key_column_ = table_->indexes()[*key_index_].columns.front().column;
}

std::optional<jet::RowId> JetTable::FindRow(std::int64_t rowid) const {
  if (has_key()) {
    jet::IndexCursor rows = table_->Search(key_index(), {rowid, rowid});
    return rows.Next() ? std::optional(rows.id()) : std::nullopt;
  }
  const jet::RowId id = jet::RowId::FromNumber(rowid);
  jet::RowView row = table_->MakeRowView();
  return table_->Read(id, row) ? std::optional(id) : std::nullopt;
}

std::string JetTable::Declaration() const {
  std::string text = "CREATE TABLE t (";
  for (const jet::Column& column : table_->columns()) {
    if (&column != &table_->columns().front()) text += ", ";
    text.append(QuotedName(column.name)).append(" ").append(DeclaredType(column.type));
  }
  return text + ")";
}

std::string QuotedName(std::string_view name) { return '"' + base::ReplaceAll(name, "\"", "\"\"") + '"'; }

}  // namespace kestro::adapters
