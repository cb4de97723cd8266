#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "jet/bytes.h"
#include "jet/row_layout.h"
#include "jet/table_definition.h"
#include "jet/value.h"

namespace kestro::jet {

inline constexpr std::size_t kLongestEncodedRow = 4060;

/// Builds the bytes of a row: first every column gets its value, then Build() puts them together. A long
/// value that does not fit into the row gets an empty place; the caller stores it and fills the place.
///
/// One object serves one row after the other and keeps its memory.
class RowEncoder {
 public:
  explicit RowEncoder(const TableDefinition& definition) : definition_(&definition) {}

  /// Starts a row in which everything is null.
  void Clear();

  /// Throws kValue (type, range, length, characters) and kRequired.
  void Set(std::size_t position, const Value& value);

  /// Takes over stored bytes of another row.
  void SetStored(std::size_t position, std::optional<ByteSpan> stored);

  /// The row; valid until the next call. kValue when it is too long for a page.
  [[nodiscard]] ByteSpan Build();

  /// Long values that must be stored outside; only after Build().
  struct LongPart {
    std::size_t column = 0;
    std::size_t place = 0;  // of its 12 bytes within the row
    ByteSpan data;
  };
  [[nodiscard]] std::span<const LongPart> long_parts() const { return long_parts_; }
  [[nodiscard]] MutableBytes place(const LongPart& part);

 private:
  struct Field {
    std::size_t start = 0;  // in arena_
    std::size_t size = 0;
    bool set = false;      // not null; of kBool the value
    bool outside = false;  // long value to be stored elsewhere
  };

  void SetScalar(const Column& column, const Value& value, Field& field);
  void SetText(const Column& column, const Value& value, Field& field);
  void SetBytes(const Column& column, const Value& value, Field& field);
  void MakeLong(Field& field);
  void AppendNumber(std::uint64_t bits, std::size_t size);
  [[nodiscard]] ByteSpan data(const Field& field) const {
    return ByteSpan(arena_).subspan(field.start, field.size);
  }
  [[nodiscard]] std::size_t RowSize() const;
  void BuildFixed(MutableBytes row) const;
  std::size_t BuildVariable(MutableBytes row, std::size_t tail);

  const TableDefinition* definition_;
  std::vector<Field> fields_;
  std::vector<std::uint8_t> arena_;
  std::vector<std::size_t> by_variable_;  // column of each entry of the variable table
  std::vector<LongPart> long_parts_;
  std::array<std::uint8_t, kPageSize> row_{};
};

}  // namespace kestro::jet
