#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sqlite3.h>

#include "adapters/sqlite/jet_table.h"
#include "jet/index_cursor.h"

namespace kestro::adapters {

/// What xBestIndex sees of a condition ContainsText(column, part).
inline constexpr int kContainsTextConstraint = SQLITE_INDEX_CONSTRAINT_FUNCTION;

/// How a table is read. SQLite carries it as a number and a text from xBestIndex to xFilter.
struct JetPlan {
  enum class Access {
    kScan,   // all rows as they are stored
    kIndex,  // a range of an index, ascending
    kOrder,  // all rows in the order of a text column
  };

  Access access = Access::kScan;
  std::size_t position = 0;  // of the index or the column
  // What comes with xFilter, in this order, before the parts of `containing`; equal stands alone.
  bool equal = false;
  bool from = false;
  bool to = false;
  bool descending = false;  // kOrder
  /// Text columns that must contain what xFilter brings for each: most rows of a search never reach SQLite.
  std::vector<std::size_t> containing;

  [[nodiscard]] int PackedNumber() const;
  [[nodiscard]] std::string PackedText() const;
  static JetPlan FromPacked(int packed, std::string_view text);

  /// The keys that the values of xFilter leave; nothing when no key can fulfil them. SQLite checks each row
  /// itself once more: the range may be too wide but never too narrow.
  [[nodiscard]] std::optional<jet::IntegerRange> Range(std::span<sqlite3_value*> values) const;
};

/// Fills in what xBestIndex answers.
void ChoosePlan(const JetTable& table, sqlite3_index_info& info);

}  // namespace kestro::adapters
