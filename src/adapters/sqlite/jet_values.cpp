#include "adapters/sqlite/jet_values.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <variant>

#include "adapters/sqlite/valid_text.h"
#include "jet/error.h"

namespace kestro::adapters {
namespace {

using jet::ColumnType;

constexpr double kMoneyUnit = 10'000;
constexpr std::size_t kTerminatedText = 4096;                // longest one whose end is looked for
constexpr double kInt64Limit = 9'223'372'036'854'775'808.0;  // 2^63

[[noreturn]] void Refuse(const jet::Column& column) {
  throw jet::Error(jet::ErrorKind::kValue, "The value does not fit column '" + column.name + "'.");
}

void SetInteger(sqlite3_context* context, std::optional<std::int64_t> value) {
  if (value) sqlite3_result_int64(context, *value);
}

void SetNumber(sqlite3_context* context, std::optional<double> value) {
  if (value) sqlite3_result_double(context, *value);
}

/// With its final zero SQLite need not copy a text once more when it is asked for.
void SetText(sqlite3_context* context, const std::string& text) {
  if (text.size() < kTerminatedText && text.find('\0') == std::string::npos) {
    return sqlite3_result_text(context, text.c_str(), -1, SQLITE_TRANSIENT);
  }
  sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void SetOther(sqlite3_context* context, const jet::Value& value) {
  if (const auto* const text = std::get_if<std::string>(&value)) {
    SetText(context, *text);
  } else if (const auto* const blob = std::get_if<jet::Blob>(&value)) {
    // Never a null pointer, which would mean null.
    sqlite3_result_blob64(context, blob->empty() ? "" : static_cast<const void*>(blob->data()), blob->size(),
                          SQLITE_TRANSIENT);
  }
}

double ToNumber(sqlite3_value* value, const jet::Column& column) {
  const int type = sqlite3_value_numeric_type(value);
  if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) Refuse(column);
  return sqlite3_value_double(value);
}

std::int64_t ToInteger(sqlite3_value* value, const jet::Column& column) {
  const int type = sqlite3_value_numeric_type(value);
  if (type == SQLITE_INTEGER) return sqlite3_value_int64(value);
  const double number = ToNumber(value, column);
  if (std::trunc(number) != number || std::abs(number) >= kInt64Limit) Refuse(column);
  return static_cast<std::int64_t>(number);
}

std::int64_t ToMoney(sqlite3_value* value, const jet::Column& column) {
  const double units = std::round(ToNumber(value, column) * kMoneyUnit);
  if (!(std::abs(units) < kInt64Limit)) Refuse(column);
  return static_cast<std::int64_t>(units);
}

std::string ToText(sqlite3_value* value, const jet::Column& column) {
  if (sqlite3_value_type(value) == SQLITE_BLOB) Refuse(column);
  return ValidText(TextOf(value));
}

jet::Blob ToBlob(sqlite3_value* value, const jet::Column& column) {
  if (sqlite3_value_type(value) != SQLITE_BLOB) Refuse(column);
  const auto* const bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
  if (bytes == nullptr) return {};
  return {bytes, bytes + sqlite3_value_bytes(value)};
}

}  // namespace

std::string_view TextOf(sqlite3_value* value) {
  const auto* const text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
  return text == nullptr ? "" : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

std::string_view DeclaredType(ColumnType type) {
  switch (type) {
    case ColumnType::kBool:
    case ColumnType::kByte:
    case ColumnType::kInt16:
    case ColumnType::kInt32:
      return "INTEGER";
    case ColumnType::kMoney:
    case ColumnType::kFloat:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return "REAL";
    case ColumnType::kText:
    case ColumnType::kMemo:
      return "TEXT COLLATE TextOrder";
    case ColumnType::kGuid:
    case ColumnType::kNumeric:
      return "TEXT";
    default:
      return "BLOB";
  }
}

void SetResult(sqlite3_context* context, const jet::RowView& row, const jet::Column& column,
               std::size_t position, std::string& buffer) {
  switch (column.type) {
    case ColumnType::kText:
    case ColumnType::kMemo:
      if (!row.Text(position, buffer)) return;
      return SetText(context, buffer);
    case ColumnType::kBool:
    case ColumnType::kByte:
    case ColumnType::kInt16:
    case ColumnType::kInt32:
      return SetInteger(context, row.Integer(position));
    case ColumnType::kMoney:
      if (const auto units = row.Integer(position)) {
        sqlite3_result_double(context, static_cast<double>(*units) / kMoneyUnit);
      }
      return;
    case ColumnType::kFloat:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return SetNumber(context, row.Number(position));
    default:
      return SetOther(context, row.Get(position));
  }
}

jet::Value ToStored(sqlite3_value* value, const jet::Column& column) {
  if (sqlite3_value_type(value) == SQLITE_NULL) {
    if (column.type == ColumnType::kBool) return false;
    return jet::Null{};
  }
  switch (column.type) {
    case ColumnType::kText:
    case ColumnType::kMemo:
    case ColumnType::kGuid:
    case ColumnType::kNumeric:
      return ToText(value, column);
    case ColumnType::kBool:
      return ToNumber(value, column) != 0;
    case ColumnType::kByte:
    case ColumnType::kInt16:
    case ColumnType::kInt32:
      return ToInteger(value, column);
    case ColumnType::kMoney:
      return ToMoney(value, column);
    case ColumnType::kFloat:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return ToNumber(value, column);
    default:
      return ToBlob(value, column);
  }
}

}  // namespace kestro::adapters
