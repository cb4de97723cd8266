#include "jet/row_layout.h"

#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kFixedAt = 2;

[[noreturn]] void ThrowDamaged() {
  throw Error(ErrorKind::kDamaged, "The parts of a row do not fit together");
}

}  // namespace

std::size_t FixedSize(ColumnType type) {
  switch (type) {
    case ColumnType::kByte:
      return 1;
    case ColumnType::kInt16:
      return 2;
    case ColumnType::kInt32:
    case ColumnType::kFloat:
      return 4;
    case ColumnType::kMoney:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return 8;
    case ColumnType::kGuid:
      return 16;
    case ColumnType::kNumeric:
      return 17;
    default:
      return 0;
  }
}

RowLayout::RowLayout(ByteSpan row, bool has_variable) : row_(row), has_variable_(has_variable) {
  if (row.size() < kFixedAt) ThrowDamaged();
  columns_ = Load16(row, 0);
  const std::size_t mask_size = (columns_ + 7) / 8;
  if (columns_ > 0x100 || row.size() < kFixedAt + mask_size) ThrowDamaged();
  mask_at_ = row.size() - mask_size;
}

// Looked at per column instead of once a row: most rows are asked for a single column.
std::size_t RowLayout::variable_count() const {
  if (!has_variable_) return 0;
  if (mask_at_ < kFixedAt + 4) ThrowDamaged();
  const std::size_t count = Load16(row_, mask_at_ - 2);
  if (count > 0x100 || mask_at_ < kFixedAt + 2 * count + 4) ThrowDamaged();
  return count;
}

std::size_t RowLayout::Start(std::size_t index) const { return Load16(row_, mask_at_ - 2 - 2 * (index + 1)); }

std::size_t RowLayout::ValuesEnd(std::size_t count) const {
  const std::size_t end_at = mask_at_ - 2 - 2 * count - 2;
  const std::size_t end = Load16(row_, end_at);
  if (end > end_at) ThrowDamaged();
  return end;
}

std::size_t RowLayout::FixedEnd() const {
  if (!has_variable_) return mask_at_;
  const std::size_t count = variable_count();
  const std::size_t values_end = ValuesEnd(count);
  const std::size_t end = count == 0 ? values_end : Start(0);
  if (end < kFixedAt || end > values_end) ThrowDamaged();
  return end;
}

bool RowLayout::SpareBitsAreZero() const {
  return columns_ % 8 == 0 || (row_[row_.size() - 1] >> (columns_ % 8)) == 0;
}

ByteSpan RowLayout::Fixed(const Column& column) const {
  const std::size_t size = FixedSize(column.type);
  const std::size_t start = kFixedAt + column.fixed_offset;
  const std::size_t end = FixedEnd();
  if (start > end || size > end - start) ThrowDamaged();
  return row_.subspan(start, size);
}

std::optional<ByteSpan> RowLayout::Variable(std::size_t index) const {
  const std::size_t count = variable_count();
  if (index >= count) return std::nullopt;
  const std::size_t values_end = ValuesEnd(count);
  const std::size_t start = Start(index);
  const std::size_t end = index + 1 < count ? Start(index + 1) : values_end;
  if (start < kFixedAt || start > end || end > values_end) ThrowDamaged();
  return row_.subspan(start, end - start);
}

std::optional<ByteSpan> RowLayout::Value(const Column& column) const {
  if (!Bit(column.number)) return std::nullopt;
  if (column.type == ColumnType::kBool) return ByteSpan();
  if (column.fixed) return Fixed(column);
  const std::optional<ByteSpan> value = Variable(column.variable_index);
  // Fixed-size types may be kept in the variable part.
  if (value && value->size() < FixedSize(column.type)) ThrowDamaged();
  return value;
}

}  // namespace kestro::jet
