#include "adapters/sqlite/sqlite_recordset.h"

#include <utility>

#include "adapters/sqlite/sqlite_error.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kDescending = " DESC";

void Bind(sqlite3* database, sqlite3_stmt* statement, const std::vector<StatementParameter>& parameters) {
  if (std::cmp_not_equal(parameters.size(), sqlite3_bind_parameter_count(statement))) {
    RaiseDatabaseError("The statement has another number of parameters than the command.");
  }
  int position = 0;
  for (const auto& parameter : parameters) {
    ++position;
    const auto* const text = std::get_if<std::string>(&parameter);
    const int result = text != nullptr ? sqlite3_bind_text64(statement, position, text->data(), text->size(),
                                                             nullptr /*not copied*/, SQLITE_UTF8)
                                       : sqlite3_bind_int64(statement, position, std::get<0>(parameter));
    CheckResult(result, database, "A parameter cannot be set");
  }
}

std::string_view ColumnText(sqlite3_stmt* row, int index) {
  const auto* const text =
      static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(row, index)));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(row, index))};
}

}  // namespace

SqliteRecordset::SqliteRecordset(std::shared_ptr<SqliteHandle> handle, ports::Connection& connection,
                                 StatementCache::Lease statement, std::vector<StatementParameter> parameters)
    : handle_(std::move(handle)), connection_(&connection), parameters_(std::move(parameters)) {
  Start(std::move(statement));
}

void SqliteRecordset::Start(StatementCache::Lease statement) {
  statement_ = std::move(statement);
  Bind(handle_->get(), statement_.get(), parameters_);
  position_ = 0;
  count_.reset();
  Step();
}

void SqliteRecordset::Restart() {
  sqlite3_reset(statement_.get());  // keeps the values; its result repeats an error that was raised before
  position_ = 0;
  Step();
}

void SqliteRecordset::Step() {
  const int result = sqlite3_step(statement_.get());
  if (result != SQLITE_ROW && result != SQLITE_DONE) {
    at_end_ = true;
    RaiseEngineError(handle_->get(), "The statement failed");
  }
  at_end_ = result == SQLITE_DONE;
}

sqlite3_stmt* SqliteRecordset::OpenStatement() const {
  if (statement_.empty()) RaiseDatabaseError("The recordset is closed.");
  return statement_.get();
}

sqlite3_stmt* SqliteRecordset::CurrentRow(int index) const {
  sqlite3_stmt* const statement = OpenStatement();
  if (index < 0 || index >= sqlite3_column_count(statement)) base::RaiseSubscriptOutOfRange();
  if (at_end_) RaiseDatabaseError("The recordset is at its end: there is no current row.");
  return statement;
}

bool SqliteRecordset::AtEnd() const {
  static_cast<void>(OpenStatement());
  return at_end_;
}

void SqliteRecordset::MoveNext() {
  static_cast<void>(OpenStatement());
  if (at_end_) RaiseDatabaseError("The recordset is at its end already.");
  Step();
  ++position_;
}

std::int64_t SqliteRecordset::RecordCount() const {
  if (sqlite3_column_count(OpenStatement()) == 0) return 0;
  if (!count_) count_ = CountRows();
  return *count_;
}

std::int64_t SqliteRecordset::CountRows() const {
  const auto counting = handle_->statements().Take("SELECT COUNT(*) FROM (" + statement_.text() + ")");
  Bind(handle_->get(), counting.get(), parameters_);
  if (sqlite3_step(counting.get()) != SQLITE_ROW) {
    RaiseEngineError(handle_->get(), "The rows cannot be counted");
  }
  return sqlite3_column_int64(counting.get(), 0);
}

std::int64_t SqliteRecordset::Position() const {
  static_cast<void>(OpenStatement());
  return position_;
}

void SqliteRecordset::MoveTo(std::int64_t row) {
  // Only a selection can be counted: a statement that changes something never runs a second time.
  if (row < 0 || row >= RecordCount()) base::RaiseSubscriptOutOfRange();
  if (at_end_ || row < position_) Restart();
  while (!at_end_ && position_ < row) MoveNext();
  if (at_end_) base::RaiseSubscriptOutOfRange();  // another program deleted rows since they were counted
}

int SqliteRecordset::FieldCount() const { return sqlite3_column_count(OpenStatement()); }

std::string_view SqliteRecordset::FieldName(int index) const {
  if (index < 0 || index >= FieldCount()) base::RaiseSubscriptOutOfRange();
  const char* const name = sqlite3_column_name(OpenStatement(), index);
  if (name == nullptr) RaiseEngineError(handle_->get(), "The field's name cannot be read");
  return name;
}

ports::DatabaseValue SqliteRecordset::Field(int index) const {
  sqlite3_stmt* const row = CurrentRow(index);
  switch (sqlite3_column_type(row, index)) {
    case SQLITE_NULL:
      return ports::Null{};
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(row, index)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(row, index);
    default:
      return std::string(ColumnText(row, index));
  }
}

std::string_view SqliteRecordset::Text(int index) const { return ColumnText(CurrentRow(index), index); }

std::int64_t SqliteRecordset::Integer(int index) const {
  return sqlite3_column_int64(CurrentRow(index), index);
}

int SqliteRecordset::FieldIndex(std::string_view name) const {
  for (int index = 0; index < FieldCount(); ++index) {
    if (base::EqualIgnoringCase(FieldName(index), name)) return index;
  }
  base::RaiseSubscriptOutOfRange();
}

std::string SqliteRecordset::Sort() const {
  static_cast<void>(OpenStatement());
  return sort_;
}

void SqliteRecordset::SetSort(std::string_view sort) {
  sqlite3_stmt* const current = OpenStatement();
  if (sqlite3_column_count(current) == 0 || sqlite3_stmt_readonly(current) == 0) {
    RaiseDatabaseError("Only a selection can be sorted.");  // anything else would run a second time
  }
  if (query_.empty()) query_ = statement_.text();
  auto sorted = handle_->statements().Take(sort.empty() ? query_ : SortedQuery(sort));
  Start(std::move(sorted));
  sort_ = sort;
}

std::string SqliteRecordset::SortedQuery(std::string_view sort) const {
  const auto is_field = [this](std::string_view name) {
    for (int index = 0; index < FieldCount(); ++index) {
      if (FieldName(index) == name) return true;
    }
    return false;
  };
  const bool descending = !is_field(sort) && sort.ends_with(kDescending);
  const auto field = sort.substr(0, sort.size() - (descending ? kDescending.size() : 0));
  if (!is_field(field)) {
    RaiseDatabaseError(std::string("The sort order '").append(sort).append("' names no field of the query."));
  }
  return "SELECT * FROM (" + query_ + ") ORDER BY \"" + base::ReplaceAll(field, "\"", "\"\"") +
         "\" COLLATE TextOrder" + std::string(descending ? kDescending : "");
}

void SqliteRecordset::Close() {
  static_cast<void>(OpenStatement());
  statement_.GiveBack();
}

}  // namespace kestro::adapters
