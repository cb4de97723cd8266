#include "jet/row_view.h"

#include <bit>
#include <utility>

#include "jet/error.h"
#include "jet/long_value.h"
#include "jet/stored_text.h"
#include "jet/table_definition.h"
#include "jet/value_text.h"

namespace kestro::jet {
namespace {

std::int64_t LoadInteger(ColumnType type, ByteSpan bytes) {
  switch (type) {
    case ColumnType::kByte:
      return Load8(bytes, 0);
    case ColumnType::kInt16:
      return static_cast<std::int16_t>(Load16(bytes, 0));
    case ColumnType::kInt32:
      return static_cast<std::int32_t>(Load32(bytes, 0));
    default:
      return static_cast<std::int64_t>(Load64(bytes, 0));
  }
}

bool IsInteger(ColumnType type) {
  return type == ColumnType::kByte || type == ColumnType::kInt16 || type == ColumnType::kInt32 ||
         type == ColumnType::kMoney;
}

bool IsNumber(ColumnType type) {
  return type == ColumnType::kFloat || type == ColumnType::kDouble || type == ColumnType::kDate;
}

double LoadNumber(ColumnType type, ByteSpan bytes) {
  if (type == ColumnType::kFloat) return static_cast<double>(std::bit_cast<float>(Load32(bytes, 0)));
  return std::bit_cast<double>(Load64(bytes, 0));
}

// The alternative T of `value`; its memory is kept when it is that already.
template <typename T>
T& Become(Value& value) {
  if (T* present = std::get_if<T>(&value)) return *present;
  return value.emplace<T>();
}

}  // namespace

void RowView::Attach(RowId id, PageRef page, ByteSpan bytes) {
  id_ = id;
  page_ = std::move(page);
  layout_ = RowLayout(bytes, definition_->variable_count > 0);
}

bool RowView::IsNull(std::size_t column) const {
  const Column& described = definition_->columns[column];
  return described.type != ColumnType::kBool && !layout_.Bit(described.number);
}

std::optional<ByteSpan> RowView::Raw(std::size_t column) const {
  return layout_.Value(definition_->columns[column]);
}

std::optional<std::int64_t> RowView::Integer(std::size_t column) const {
  const Column& described = definition_->columns[column];
  if (described.type == ColumnType::kBool) return layout_.Bit(described.number) ? 1 : 0;
  if (!IsInteger(described.type)) return std::nullopt;
  const std::optional<ByteSpan> raw = layout_.Value(described);
  return raw ? std::optional(LoadInteger(described.type, *raw)) : std::nullopt;
}

std::optional<double> RowView::Number(std::size_t column) const {
  const Column& described = definition_->columns[column];
  if (!IsNumber(described.type)) return std::nullopt;
  const std::optional<ByteSpan> raw = layout_.Value(described);
  return raw ? std::optional(LoadNumber(described.type, *raw)) : std::nullopt;
}

std::optional<StoredText> RowView::TextInPlace(std::size_t column) const {
  const Column& described = definition_->columns[column];
  if (!described.IsText()) return std::nullopt;
  std::optional<ByteSpan> raw = layout_.Value(described);
  if (raw && described.type == ColumnType::kMemo) raw = InlineLongValue(*raw);
  return raw ? std::optional(LookAtStoredText(*raw)) : std::nullopt;
}

bool RowView::Text(std::size_t column, std::string& text) const {
  text.clear();
  const Column& described = definition_->columns[column];
  if (!described.IsText()) return false;
  const std::optional<ByteSpan> raw = layout_.Value(described);
  if (!raw) return false;
  if (described.type == ColumnType::kText) {
    AppendStoredText(*raw, text);
  } else if (const std::optional<ByteSpan> inside = InlineLongValue(*raw)) {
    AppendStoredText(*inside, text);
  } else {
    Blob whole;
    ReadLongValue(*pager_, *raw, whole);
    AppendStoredText(whole, text);
  }
  return true;
}

void RowView::Get(std::size_t column, Value& value) const {
  const Column& described = definition_->columns[column];
  if (described.type == ColumnType::kBool) {
    value = layout_.Bit(described.number);
    return;
  }
  const std::optional<ByteSpan> raw = layout_.Value(described);
  if (!raw) {
    value = Null();
  } else if (IsInteger(described.type)) {
    value = LoadInteger(described.type, *raw);
  } else if (IsNumber(described.type)) {
    value = LoadNumber(described.type, *raw);
  } else if (described.IsText()) {
    Text(column, Become<std::string>(value));
  } else if (described.type == ColumnType::kGuid) {
    value = GuidText(*raw);
  } else if (described.type == ColumnType::kNumeric) {
    value = NumericText(*raw, described.scale);
  } else if (described.type == ColumnType::kOle) {
    ReadLongValue(*pager_, *raw, Become<Blob>(value));
  } else {
    Become<Blob>(value).assign(raw->begin(), raw->end());
  }
}

Value RowView::Get(std::size_t column) const {
  Value value;
  Get(column, value);
  return value;
}

}  // namespace kestro::jet
