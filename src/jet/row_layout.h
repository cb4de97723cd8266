#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "jet/bytes.h"
#include "jet/column.h"

namespace kestro::jet {

/// Bytes of a value in the fixed part; 0 for types without a fixed size, and for kBool, which has no bytes.
[[nodiscard]] std::size_t FixedSize(ColumnType type);

/// Where the parts of one row are. Rows are read from their end, since they may have unused bytes in the
/// middle:
///
///   number of columns, fixed part, variable values, (unused), end of values, starts of the variable values
///   (last one first), their number, a bit a column: not null
class RowLayout {
 public:
  RowLayout() = default;

  /// Throws kDamaged when the columns do not fit the bytes; the rest is looked at when it is asked for.
  /// `has_variable`: the table has variable columns.
  RowLayout(ByteSpan row, bool has_variable);

  [[nodiscard]] ByteSpan bytes() const { return row_; }
  [[nodiscard]] std::size_t column_count() const { return columns_; }
  /// Throws kDamaged when they do not fit the bytes.
  [[nodiscard]] std::size_t variable_count() const;

  /// The bit of a column: not null, or of kBool the value. False when the row is older than the column.
  [[nodiscard]] bool Bit(std::size_t number) const {
    return number < columns_ && (row_[mask_at_ + number / 8] >> (number % 8) & 1) != 0;
  }

  /// True when the bits behind the last column are all 0.
  [[nodiscard]] bool SpareBitsAreZero() const;

  /// Throws kDamaged when the parts of the row do not fit together.
  void Check() const { (void)FixedEnd(); }

  /// The stored bytes; nothing when null. Throws kDamaged when they are not inside the row.
  [[nodiscard]] std::optional<ByteSpan> Value(const Column& column) const;

 private:
  [[nodiscard]] ByteSpan Fixed(const Column& column) const;
  [[nodiscard]] std::optional<ByteSpan> Variable(std::size_t index) const;
  [[nodiscard]] std::size_t Start(std::size_t index) const;
  [[nodiscard]] std::size_t ValuesEnd(std::size_t count) const;
  [[nodiscard]] std::size_t FixedEnd() const;

  ByteSpan row_;
  std::size_t columns_ = 0;
  std::size_t mask_at_ = 0;  // before it: the number of variable values, before that their starts
  bool has_variable_ = false;
};

}  // namespace kestro::jet
