#include "jet/row_encoder.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string>

#include "jet/error.h"
#include "jet/long_value.h"
#include "jet/stored_text.h"
#include "jet/value_text.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kFixedAt = 2;
constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

[[noreturn]] void ThrowValue(const Column& column, const char* what) {
  throw Error(ErrorKind::kValue, "The value for \"" + column.name + "\" " + what);
}

std::int64_t IntegerOf(const Column& column, const Value& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return *integer;
  ThrowValue(column, "is no integer");
}

std::int64_t InRange(const Column& column, std::int64_t value, std::int64_t first, std::int64_t last) {
  if (value < first || value > last) ThrowValue(column, "is out of range");
  return value;
}

double NumberOf(const Column& column, const Value& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  ThrowValue(column, "is no number");
}

}  // namespace

void RowEncoder::Clear() {
  arena_.clear();
  long_parts_.clear();
  fields_.assign(definition_->columns.size(), Field());
  by_variable_.assign(definition_->variable_count, kNoColumn);
  for (std::size_t i = 0; i < definition_->columns.size(); ++i) {
    const Column& column = definition_->columns[i];
    if (!column.fixed) by_variable_[column.variable_index] = i;
  }
}

void RowEncoder::AppendNumber(std::uint64_t bits, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) arena_.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
}

void RowEncoder::Set(std::size_t position, const Value& value) {
  const Column& column = definition_->columns[position];
  Field& field = fields_[position];
  field = Field();
  field.start = arena_.size();
  if (std::holds_alternative<Null>(value)) {
    if (column.required) throw Error(ErrorKind::kRequired, "\"" + column.name + "\" must have a value");
    return;
  }
  field.set = true;
  if (column.IsText()) {
    SetText(column, value, field);
  } else if (column.type == ColumnType::kBinary || column.type == ColumnType::kOle) {
    SetBytes(column, value, field);
  } else {
    SetScalar(column, value, field);
  }
  field.size = arena_.size() - field.start;
  if (column.IsLong()) MakeLong(field);
}

void RowEncoder::SetScalar(const Column& column, const Value& value, Field& field) {
  switch (column.type) {
    case ColumnType::kBool: {
      const auto* flag = std::get_if<bool>(&value);
      field.set = flag != nullptr ? *flag : IntegerOf(column, value) != 0;
      return;
    }
    case ColumnType::kByte:
      return AppendNumber(static_cast<std::uint64_t>(InRange(column, IntegerOf(column, value), 0, 255)), 1);
    case ColumnType::kInt16:
      return AppendNumber(
          static_cast<std::uint64_t>(InRange(column, IntegerOf(column, value), INT16_MIN, INT16_MAX)), 2);
    case ColumnType::kInt32:
      return AppendNumber(
          static_cast<std::uint64_t>(InRange(column, IntegerOf(column, value), INT32_MIN, INT32_MAX)), 4);
    case ColumnType::kMoney:
      return AppendNumber(static_cast<std::uint64_t>(IntegerOf(column, value)), 8);
    case ColumnType::kFloat:
      return AppendNumber(std::bit_cast<std::uint32_t>(static_cast<float>(NumberOf(column, value))), 4);
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return AppendNumber(std::bit_cast<std::uint64_t>(NumberOf(column, value)), 8);
    case ColumnType::kGuid: {
      const auto* text = std::get_if<std::string>(&value);
      const auto guid = text != nullptr ? ParseGuid(*text) : std::nullopt;
      if (!guid) ThrowValue(column, "is no GUID");
      arena_.insert(arena_.end(), guid->begin(), guid->end());
      return;
    }
    default:
      ThrowValue(column, "cannot be written: its type can only be read");
  }
}

void RowEncoder::SetText(const Column& column, const Value& value, Field& field) {
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr) ThrowValue(column, "is no text");
  if (text->empty() && !column.allow_empty_text) ThrowValue(column, "must not be an empty text");
  if (column.IsLong() && text->size() > kLongestLongValue / 2) ThrowValue(column, "is too long");
  field.start = arena_.size();
  const TextForm form = column.compressed ? TextForm::kShortestAllowed : TextForm::kPlain;
  const std::size_t units = AppendTextBytes(*text, form, arena_);
  if (!column.IsLong() && units * 2 > column.length) ThrowValue(column, "is too long");
}

void RowEncoder::SetBytes(const Column& column, const Value& value, Field& field) {
  const auto* blob = std::get_if<Blob>(&value);
  if (blob == nullptr) ThrowValue(column, "is no block of bytes");
  if (blob->size() > (column.IsLong() ? kLongestLongValue : column.length)) ThrowValue(column, "is too long");
  field.start = arena_.size();
  arena_.insert(arena_.end(), blob->begin(), blob->end());
}

// Short data gets its header in front; of long data only the header will be in the row.
void RowEncoder::MakeLong(Field& field) {
  if (field.size > kLongestInline) {
    field.outside = true;
    return;
  }
  std::array<std::uint8_t, kLongHeaderSize> header{};
  Store32(header, 0, static_cast<std::uint32_t>(field.size) | 0x80000000U);
  arena_.insert(arena_.begin() + static_cast<std::ptrdiff_t>(field.start), header.begin(), header.end());
  field.size += kLongHeaderSize;
}

void RowEncoder::SetStored(std::size_t position, std::optional<ByteSpan> stored) {
  Field& field = fields_[position];
  field = Field();
  field.start = arena_.size();
  field.set = stored.has_value();
  if (!stored) return;
  arena_.insert(arena_.end(), stored->begin(), stored->end());
  field.size = stored->size();
}

std::size_t RowEncoder::RowSize() const {
  std::size_t size = kFixedAt + definition_->fixed_size + (definition_->max_columns + 7U) / 8U;
  if (definition_->variable_count > 0) size += 2 + 2U * definition_->variable_count + 2;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (definition_->columns[i].fixed || !fields_[i].set) continue;
    size += fields_[i].outside ? kLongHeaderSize : fields_[i].size;
  }
  return size;
}

void RowEncoder::BuildFixed(MutableBytes row) const {
  const std::size_t mask_at = row.size() - (definition_->max_columns + 7U) / 8U;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const Column& column = definition_->columns[i];
    if (!fields_[i].set) continue;
    std::uint8_t& bits = row[mask_at + column.number / 8U];
    bits = static_cast<std::uint8_t>(bits | (1U << (column.number % 8U)));
    if (column.fixed && fields_[i].size > 0) Copy(row, kFixedAt + column.fixed_offset, data(fields_[i]));
  }
}

// `tail`: where the part behind the values begins.
std::size_t RowEncoder::BuildVariable(MutableBytes row, std::size_t tail) {
  std::size_t at = kFixedAt + definition_->fixed_size;
  const std::size_t count = by_variable_.size();
  for (std::size_t i = 0; i < count; ++i) {
    Store16(row, tail + 2 + 2 * (count - 1 - i), static_cast<std::uint16_t>(at));
    if (by_variable_[i] == kNoColumn) continue;
    const Field& field = fields_[by_variable_[i]];
    if (!field.set) continue;
    if (field.outside) {
      long_parts_.push_back({by_variable_[i], at, data(field)});
      at += kLongHeaderSize;
    } else {
      Copy(row, at, data(field));
      at += field.size;
    }
  }
  Store16(row, tail, static_cast<std::uint16_t>(at));
  Store16(row, tail + 2 + 2 * count, static_cast<std::uint16_t>(count));
  return at;
}

ByteSpan RowEncoder::Build() {
  const std::size_t size = RowSize();
  if (size > kLongestEncodedRow) throw Error(ErrorKind::kValue, "The row is too long");
  const MutableBytes row = MutableBytes(row_).first(size);
  std::ranges::fill(row, std::uint8_t{0});
  Store16(row, 0, definition_->max_columns);
  BuildFixed(row);
  long_parts_.clear();
  if (!by_variable_.empty()) {
    const std::size_t mask_size = (definition_->max_columns + 7U) / 8U;
    (void)BuildVariable(row, size - mask_size - 2 - 2 * by_variable_.size() - 2);
  }
  return row;
}

MutableBytes RowEncoder::place(const LongPart& part) {
  return MutableBytes(row_).subspan(part.place, kLongHeaderSize);
}

}  // namespace kestro::jet
