#include "jet/index_key.h"

#include <algorithm>
#include <bit>
#include <string>

#include "jet/row_layout.h"
#include "jet/stored_text.h"
#include "jet/table_definition.h"
#include "jet/text_key.h"

namespace kestro::jet {
namespace {

// Value bytes, the most significant first.
bool AppendBig(std::uint64_t value, std::size_t size, IndexKey& key) {
  bool fits = true;
  for (std::size_t i = size; i-- > 0;) fits = fits && key.Append(static_cast<std::uint8_t>(value >> (8 * i)));
  return fits;
}

std::uint64_t LoadSized(ByteSpan bytes, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i-- > 0;) value = (value << 8) | Load8(bytes, i);
  return value;
}

bool AppendInteger(ByteSpan raw, std::size_t size, IndexKey& key) {
  const std::uint64_t sign = std::uint64_t{1} << (8 * size - 1);
  return AppendBig(LoadSized(raw, size) ^ sign, size, key);
}

bool AppendFloating(ByteSpan raw, std::size_t size, IndexKey& key) {
  const std::uint64_t sign = std::uint64_t{1} << (8 * size - 1);
  const std::uint64_t value = LoadSized(raw, size);
  return AppendBig((value & sign) != 0 ? ~value : value ^ sign, size, key);
}

bool AppendBinary(ByteSpan raw, IndexKey& key) {
  constexpr std::size_t kGroup = 8;
  constexpr std::uint8_t kMore = 9;
  bool fits = true;
  for (std::size_t at = 0; fits && (at == 0 || at < raw.size()); at += kGroup) {
    const std::size_t count = std::min(kGroup, raw.size() - at);
    fits = key.Append(raw.subspan(at, count));
    for (std::size_t i = count; i < kGroup; ++i) fits = fits && key.Append(0);
    const bool more = at + kGroup < raw.size();
    fits = fits && key.Append(more ? kMore : static_cast<std::uint8_t>(count));
  }
  return fits;
}

bool AppendValue(ColumnType type, ByteSpan raw, IndexKey& key) {
  switch (type) {
    case ColumnType::kByte:
      return AppendBig(Load8(raw, 0), 1, key);
    case ColumnType::kInt16:
    case ColumnType::kInt32:
    case ColumnType::kMoney:
      return AppendInteger(raw, FixedSize(type), key);
    case ColumnType::kFloat:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return AppendFloating(raw, FixedSize(type), key);
    case ColumnType::kBinary:
      return AppendBinary(raw, key);
    case ColumnType::kText: {
      std::string text;
      AppendStoredText(raw, text);
      return AppendTextKey(text, key);
    }
    default:
      return false;
  }
}

bool AppendColumn(const Column& column, bool ascending, const std::optional<ByteSpan>& raw, IndexKey& key) {
  const auto turn = [&](std::uint8_t byte) {
    return ascending ? byte : static_cast<std::uint8_t>(0xFF - byte);
  };
  if (!raw) return key.Append(turn(kKeyNull));
  if (!key.Append(turn(kKeyValue))) return false;
  if (ascending) return AppendValue(column.type, *raw, key);
  IndexKey value;
  if (!AppendValue(column.type, *raw, value)) return false;
  for (const std::uint8_t byte : value.bytes()) {
    if (!key.Append(turn(byte))) return false;
  }
  return true;
}

}  // namespace

bool IndexKey::AppendRow(RowId id) { return AppendBig(id.page, 3, *this) && Append(id.slot); }

void AppendInt32Key(std::int32_t value, IndexKey& key) {
  key.Append(kKeyValue);
  AppendBig(static_cast<std::uint32_t>(value) ^ 0x80000000U, 4, key);
}

KeyResult MakeKey(const TableDefinition& definition, const RealIndex& index, const RowLayout& row,
                  IndexKey& key) {
  key.Clear();
  std::size_t nulls = 0;
  for (const IndexColumn& part : index.columns) {
    const Column& column = definition.columns[part.column];
    const std::optional<ByteSpan> raw = row.Value(column);
    if (!raw) ++nulls;
    if (!AppendColumn(column, part.ascending, raw, key)) return KeyResult::kUnsupported;
  }
  // The row's place must fit as well.
  if (key.size() + kRowBytesInKey > IndexKey::kCapacity) return KeyResult::kUnsupported;
  if (nulls == index.columns.size()) return KeyResult::kAllNull;
  return nulls > 0 ? KeyResult::kSomeNull : KeyResult::kKey;
}

std::string_view KeyTypeProblem(const TableDefinition& definition, const RealIndex& index) {
  for (const IndexColumn& part : index.columns) {
    switch (definition.columns[part.column].type) {
      case ColumnType::kByte:
      case ColumnType::kInt16:
      case ColumnType::kInt32:
      case ColumnType::kMoney:
      case ColumnType::kFloat:
      case ColumnType::kDouble:
      case ColumnType::kDate:
      case ColumnType::kBinary:
        break;
      case ColumnType::kText:
        if (!part.ascending) return "A descending text index is not supported";
        break;
      default:
        return "An index is over a column whose sort order is not supported";
    }
  }
  return {};
}

}  // namespace kestro::jet
