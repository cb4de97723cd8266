#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "jet/page_ref.h"
#include "jet/row_id.h"
#include "jet/row_layout.h"
#include "jet/stored_text.h"
#include "jet/value.h"

namespace kestro::jet {

class Pager;
struct TableDefinition;

/// One row, read where it lies in the page cache: only the columns asked for are decoded.
///
/// Columns are positions in Table::columns(). The view keeps its page in memory. It is valid until the next
/// change of the database (insert, update, delete, rollback, ...) and must not outlive its table.
/// A row whose bytes contradict themselves is reported as Error (kDamaged) by the read that meets it.
class RowView {
 public:
  RowView() = default;
  RowView(Pager& pager, const TableDefinition& definition) : pager_(&pager), definition_(&definition) {}

  [[nodiscard]] RowId id() const { return id_; }

  [[nodiscard]] bool IsNull(std::size_t column) const;

  /// kBool, kByte, kInt16, kInt32, kMoney; empty when null or of another type.
  [[nodiscard]] std::optional<std::int64_t> Integer(std::size_t column) const;

  /// kFloat, kDouble, kDate; empty when null or of another type.
  [[nodiscard]] std::optional<double> Number(std::size_t column) const;

  /// kText and kMemo: replaces `text` (its memory is used again); false, with "", when null or of another
  /// type.
  bool Text(std::size_t column, std::string& text) const;

  /// kText and kMemo: the text as the row holds it, without a copy; empty when null, of another type, or a
  /// long text kept outside of the row, which only Text reads.
  [[nodiscard]] std::optional<StoredText> TextInPlace(std::size_t column) const;

  /// Any column. Strings and blobs in `value` keep their memory when the kind stays the same.
  void Get(std::size_t column, Value& value) const;
  [[nodiscard]] Value Get(std::size_t column) const;

  // --- for the engine ---

  /// Points the view to the bytes of a row on a page; throws kDamaged when they are no row.
  void Attach(RowId id, PageRef page, std::span<const std::uint8_t> bytes);

  /// The stored bytes of a column, empty optional when null. kBool has no bytes.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> Raw(std::size_t column) const;
  [[nodiscard]] std::span<const std::uint8_t> bytes() const { return layout_.bytes(); }
  [[nodiscard]] const RowLayout& layout() const { return layout_; }

 private:
  Pager* pager_ = nullptr;
  const TableDefinition* definition_ = nullptr;
  RowId id_;
  PageRef page_;
  RowLayout layout_;
};

}  // namespace kestro::jet
