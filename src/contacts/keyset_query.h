#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestro::contacts {

/// What a keyset recordset lists: rows of one table. Names and the condition are parts of this program,
/// never of its input; what the user typed comes as `values` only.
struct KeysetQuery {
  std::string_view table;
  /// The first one is the key: a whole number that no two rows share.
  std::vector<std::string_view> fields;
  /// Order of the rows as long as no other was asked for; one of `fields`.
  std::string_view first_order;
  std::string condition;            // empty = every row
  std::vector<std::string> values;  // of the condition's "?" marks
};

/// Field and direction of a sort text ("Name", "Name DESC").
struct SortOrder {
  std::string_view field;
  bool descending = false;
};

/// Raises a database error when the text names no field of the query. Views `query`.
[[nodiscard]] SortOrder ParseSortOrder(std::string_view text, const KeysetQuery& query);

/// Selects the keys of all rows in that order, equal rows by key.
[[nodiscard]] std::string KeysStatement(const KeysetQuery& query, const SortOrder& order);

/// Selects the fields of the rows with one of `count` keys, in no particular order.
[[nodiscard]] std::string RowsStatement(const KeysetQuery& query, std::size_t count);

}  // namespace kestro::contacts
