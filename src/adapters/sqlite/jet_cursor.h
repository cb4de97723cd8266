#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include <sqlite3.h>

#include "adapters/sqlite/jet_order.h"
#include "adapters/sqlite/jet_plan.h"
#include "adapters/sqlite/jet_table.h"
#include "adapters/sqlite/text_matcher.h"

namespace kestro::adapters {

/// A walk over rows of a table, for SQLite. Rows may change meanwhile.
class JetCursor : public sqlite3_vtab_cursor {
 public:
  explicit JetCursor(const JetTable& table) : sqlite3_vtab_cursor{}, table_(table) {}

  /// Moves to the first row.
  void Start(const JetPlan& plan, std::span<sqlite3_value*> values);
  void Next();
  [[nodiscard]] bool at_end() const { return at_end_; }
  [[nodiscard]] std::int64_t Rowid();
  /// Makes a column of the row the result; null when the row was deleted meanwhile.
  void Column(sqlite3_context* context, std::size_t column);

 private:
  /// Keys in a given order; rows are looked up by them.
  struct Ordered {
    std::shared_ptr<const JetOrder> keys;
    std::size_t position = 0;
  };

  /// A text column and what it must contain.
  struct Contains {
    std::size_t column = 0;
    TextMatcher matcher;
  };

  void Move();
  [[nodiscard]] bool Passes();
  [[nodiscard]] bool Fulfilled(const Contains& condition, const jet::RowView& row);
  [[nodiscard]] std::optional<std::int64_t> KnownKey();
  /// The current row, as it is now; null when it is gone.
  [[nodiscard]] const jet::RowView* Row();
  [[nodiscard]] const jet::RowView* ReadAgain();

  const JetTable& table_;
  std::variant<std::monostate, jet::Cursor, jet::IndexCursor, Ordered> rows_;
  std::vector<Contains> contains_;
  bool keyed_ = false;  // the walk delivers keys without reading rows
  bool at_end_ = true;
  std::uint64_t changes_ = 0;            // the session's, when the current row was found
  std::optional<jet::RowId> id_;         // of the current row, once known
  std::optional<jet::RowView> own_row_;  // read anew, of id_
  std::string buffer_;
};

}  // namespace kestro::adapters
