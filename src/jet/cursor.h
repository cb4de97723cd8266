#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/page.h"
#include "jet/page_ref.h"
#include "jet/row_view.h"

namespace kestro::jet {

class Table;

/// All rows of a table in the order of their storage:
///
///   for (Cursor cursor = table.Scan(); cursor.Next();) Use(cursor.row());
///
/// Rows may be inserted, changed and deleted between two calls of Next(), the current one included. No row
/// comes twice; a deleted one does not come any more; one inserted meanwhile may or may not come. row() is
/// valid until the next change or the next call of Next(). A cursor must not outlive its table, and ends with
/// Error (kMisuse) when the table is dropped.
class Cursor {
 public:
  explicit Cursor(const Table& table);

  /// Moves to the next row; false behind the last one.
  bool Next();

  [[nodiscard]] const RowView& row() const { return row_; }

 private:
  bool NextInPage();
  bool NextPage();
  void Refresh();

  const Table* table_;
  RowView row_;
  PageRef page_;
  PageNumber number_ = 0;  // of page_
  std::size_t slot_ = 0;   // the next one to look at
  std::uint64_t changes_ = 0;
  bool ended_ = false;
};

}  // namespace kestro::jet
