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

RowLayout::RowLayout(ByteSpan row, bool has_variable) : row_(row) {
  if (row.size() < kFixedAt) ThrowDamaged();
  columns_ = Load16(row, 0);
  const std::size_t mask_size = (columns_ + 7) / 8;
  if (columns_ > 0x100 || row.size() < kFixedAt + mask_size) ThrowDamaged();
  mask_at_ = row.size() - mask_size;
  fixed_end_ = mask_at_;
  if (!has_variable) return;
  if (mask_at_ < kFixedAt + 4) ThrowDamaged();
  starts_end_ = mask_at_ - 2;
  variables_ = Load16(row, starts_end_);
  if (variables_ > 0x100 || starts_end_ < kFixedAt + 2 * variables_ + 2) ThrowDamaged();
  const std::size_t end_at = starts_end_ - 2 * variables_ - 2;
  values_end_ = Load16(row, end_at);
  if (values_end_ > end_at) ThrowDamaged();
  fixed_end_ = variables_ == 0 ? values_end_ : Start(0);
  if (fixed_end_ < kFixedAt || fixed_end_ > values_end_) ThrowDamaged();
}

std::size_t RowLayout::Start(std::size_t index) const { return Load16(row_, starts_end_ - 2 * (index + 1)); }

bool RowLayout::SpareBitsAreZero() const {
  return columns_ % 8 == 0 || (row_[row_.size() - 1] >> (columns_ % 8)) == 0;
}

ByteSpan RowLayout::Fixed(const Column& column) const {
  const std::size_t size = FixedSize(column.type);
  const std::size_t start = kFixedAt + column.fixed_offset;
  if (start > fixed_end_ || size > fixed_end_ - start) ThrowDamaged();
  return row_.subspan(start, size);
}

std::optional<ByteSpan> RowLayout::Variable(std::size_t index) const {
  if (index >= variables_) return std::nullopt;
  const std::size_t start = Start(index);
  const std::size_t end = index + 1 < variables_ ? Start(index + 1) : values_end_;
  if (start < kFixedAt || start > end || end > values_end_) ThrowDamaged();
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
