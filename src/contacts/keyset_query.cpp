#include "contacts/keyset_query.h"

#include <algorithm>

#include "base/runtime_error.h"

namespace kestro::contacts {
namespace {

constexpr std::string_view kDescending = " DESC";

}  // namespace

SortOrder ParseSortOrder(std::string_view text, const KeysetQuery& query) {
  const bool descending = text.ends_with(kDescending);
  const auto name = text.substr(0, text.size() - (descending ? kDescending.size() : 0));
  const auto field = std::ranges::find(query.fields, name);
  if (field != query.fields.end()) return {*field, descending};
  throw base::RuntimeError(
      base::kDatabaseError,
      std::string("The sort order '").append(text).append("' names no field of the list."));
}

std::string KeysStatement(const KeysetQuery& query, const SortOrder& order) {
  const std::string key(query.fields.front());
  std::string text = std::string("SELECT ").append(key).append(" FROM ").append(query.table);
  if (!query.condition.empty()) text.append(" WHERE ").append(query.condition);
  text += " ORDER BY ";
  // Of all rows the database can know the order. A condition needs the whole of every row: following that
  // order, one look-up a row all over the file, would take far longer than sorting what passes; the plus
  // keeps the database from trying.
  if (!query.condition.empty()) text += '+';
  text.append(order.field).append(" COLLATE TextOrder");
  if (order.descending) text += kDescending;
  return text + ", " + key;
}

std::string RowsStatement(const KeysetQuery& query, std::size_t count) {
  std::string text = "SELECT ";
  for (const auto field : query.fields) {
    if (field != query.fields.front()) text += ", ";
    text += field;
  }
  text.append(" FROM ").append(query.table).append(" WHERE ").append(query.fields.front()).append(" IN (");
  for (std::size_t i = 0; i < count; ++i) text += i == 0 ? "?" : ", ?";
  return text + ")";
}

}  // namespace kestro::contacts
