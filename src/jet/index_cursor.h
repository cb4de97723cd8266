#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "jet/index_page.h"
#include "jet/index_tree.h"
#include "jet/page_ref.h"
#include "jet/row_view.h"

namespace kestro::jet {

class Table;

/// Both ends belong to the range; an absent one is open. Nulls come first, and only when both are absent.
struct IntegerRange {
  std::optional<std::int64_t> first;
  std::optional<std::int64_t> last;
};

/// The rows of a range of an INT32 index, in ascending order of key (equal keys: of storage). Comes from
/// Table::Search. The same rules hold as for Cursor: rows may change between two calls of Next(); a row whose
/// key is changed is met again when its new key lies ahead.
class IndexCursor {
 public:
  IndexCursor(const Table& table, std::size_t index, const IntegerRange& range);

  bool Next();

  /// Read at the first call after Next(): counting keys does not touch the rows.
  [[nodiscard]] const RowView& row();
  [[nodiscard]] RowId id() const;
  /// Empty: null.
  [[nodiscard]] std::optional<std::int32_t> key() const;

 private:
  static constexpr std::size_t kMostEntryBytes = 9;  // flag, key, page, slot
  using Bytes = std::array<std::uint8_t, kMostEntryBytes>;

  void SetRange(const IntegerRange& range);
  void Take(const IndexPage& leaf, std::size_t start, std::size_t end);
  [[nodiscard]] IndexTree::Place NextPlace(const IndexTree& tree);
  [[nodiscard]] ByteSpan entry() const { return ByteSpan(entry_).first(entry_size_); }

  const Table* table_;
  std::size_t real_ = 0;
  RowView row_;
  bool row_read_ = false;
  bool started_ = false;
  bool ended_ = false;
  PageRef leaf_;
  std::size_t next_start_ = 0;  // where the next entry begins on leaf_
  std::uint64_t changes_ = 0;
  Bytes entry_{};  // the current entry; before the first one the lower end
  std::size_t entry_size_ = 0;
  Bytes last_{};  // no key behind this one belongs to the range
  std::size_t last_size_ = 0;
};

}  // namespace kestro::jet
