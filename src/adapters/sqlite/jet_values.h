#pragma once

#include <string>
#include <string_view>

#include <sqlite3.h>

#include "jet/column.h"
#include "jet/row_view.h"
#include "jet/value.h"

namespace kestro::adapters {

/// SQL's side of the column types: whole numbers are INTEGER (a truth value 0 or 1), money, floating-point
/// numbers and dates (days since 1899-12-30) REAL, texts, GUIDs and decimals TEXT, everything else BLOB.

/// The text of a value: null is empty, a number its decimal text.
[[nodiscard]] std::string_view TextOf(sqlite3_value* value);

/// A column's declaration: "TEXT COLLATE TextOrder".
[[nodiscard]] std::string_view DeclaredType(jet::ColumnType type);

/// Makes the column's value the result. `buffer` is memory to be used again.
void SetResult(sqlite3_context* context, const jet::RowView& row, const jet::Column& column,
               std::size_t position, std::string& buffer);

/// What to store. Malformed bytes of a text become U+FFFD: they cannot be stored, and losing the whole text
/// for them would be worse. Throws jet::Error (kValue) for a value that the column's type cannot take.
[[nodiscard]] jet::Value ToStored(sqlite3_value* value, const jet::Column& column);

}  // namespace kestro::adapters
