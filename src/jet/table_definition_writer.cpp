#include <algorithm>

#include "jet/bytes.h"
#include "jet/error.h"
#include "jet/pager.h"
#include "jet/stored_text.h"
#include "jet/table_definition.h"

namespace kestro::jet {
namespace {

constexpr std::uint32_t kMark = 1625;
constexpr std::uint32_t kIndexMark = 1923;
constexpr std::uint32_t kGeneralOrder = 0x0409;
constexpr std::size_t kHeaderSize = 63;
constexpr std::size_t kContinuationHeader = 8;
constexpr std::size_t kIndexColumns = 10;

using Bytes = std::vector<std::uint8_t>;

MutableBytes Extend(Bytes& bytes, std::size_t count) {
  bytes.resize(bytes.size() + count);
  return MutableBytes(bytes).last(count);
}

void AppendName(Bytes& bytes, const std::string& name) {
  const std::size_t at = bytes.size();
  (void)Extend(bytes, 2);
  AppendTextBytes(name, TextForm::kPlain, bytes);
  Store16(bytes, at, static_cast<std::uint16_t>(bytes.size() - at - 2));
}

void EncodeHeader(Bytes& bytes, const TableDefinition& definition) {
  const MutableBytes header =
      Extend(bytes, kHeaderSize + kIndexCountersSize * definition.real_indexes.size());
  Store16(header, 0, PageMark(PageType::kDefinition));
  Store32(header, 12, kMark);
  Store8(header, 24, 1);
  Store8(header, 40, definition.system ? 0x53 : 0x4E);
  Store16(header, 41, definition.max_columns);
  Store16(header, 43, definition.variable_count);
  Store16(header, 45, static_cast<std::uint16_t>(definition.columns.size()));
  Store32(header, 47, static_cast<std::uint32_t>(definition.indexes.size()));
  Store32(header, 51, static_cast<std::uint32_t>(definition.real_indexes.size()));
  Store32(header, 55, definition.owned.Stored());
  Store32(header, 59, definition.free.Stored());
}

// Fixed columns carry the number of variable ones before them.
std::uint16_t VariableIndex(const TableDefinition& definition, const Column& column) {
  if (!column.fixed) return column.variable_index;
  return static_cast<std::uint16_t>(std::ranges::count_if(
      definition.columns, [&](const Column& other) { return !other.fixed && other.number < column.number; }));
}

void EncodeColumn(Bytes& bytes, const TableDefinition& definition, const Column& column) {
  const MutableBytes record = Extend(bytes, 25);
  Store8(record, 0, static_cast<std::uint8_t>(column.type));
  Store32(record, 1, kMark);
  Store16(record, 5, column.number);
  Store16(record, 7, VariableIndex(definition, column));
  Store16(record, 9, definition.system ? 0 : column.number);
  Store32(record, 11, kGeneralOrder);
  Store8(record, 15, column.flags);
  Store8(record, 16, column.compressed ? 1 : 0);
  Store16(record, 21, column.fixed_offset);
  Store16(record, 23, static_cast<std::uint16_t>(column.length));
}

void EncodeRealIndex(Bytes& bytes, const TableDefinition& definition, const RealIndex& index) {
  const MutableBytes record = Extend(bytes, 52);
  Store32(record, 0, kIndexMark);
  for (std::size_t i = 0; i < kIndexColumns; ++i) {
    const bool used = i < index.columns.size();
    Store16(record, 4 + 3 * i, used ? definition.columns[index.columns[i].column].number : 0xFFFF);
    Store8(record, 4 + 3 * i + 2, used && index.columns[i].ascending ? 1 : 0);
  }
  Store32(record, 34, index.map.Stored());
  Store32(record, 38, index.root);
  Store8(record, 46, index.flags);
}

void EncodeIndex(Bytes& bytes, std::size_t number, const Index& index) {
  const MutableBytes record = Extend(bytes, 28);
  Store32(record, 0, kMark);
  Store32(record, 4, static_cast<std::uint32_t>(number));
  Store32(record, 8, static_cast<std::uint32_t>(index.real));
  Store32(record, 13, 0xFFFFFFFF);
  Store8(record, 21, 4);
  Store8(record, 22, 4);
  Store8(record, 23, index.primary ? 1 : 0);
}

void EncodeLongColumns(Bytes& bytes, const TableDefinition& definition) {
  for (const LongColumnMaps& maps : definition.long_columns) {
    const MutableBytes record = Extend(bytes, 10);
    Store16(record, 0, definition.columns[maps.column].number);
    Store32(record, 2, maps.owned.Stored());
    Store32(record, 6, maps.free.Stored());
  }
  Store16(Extend(bytes, 2), 0, 0xFFFF);
}

}  // namespace

std::vector<std::uint8_t> EncodeTableDefinition(const TableDefinition& definition) {
  Bytes bytes;
  EncodeHeader(bytes, definition);
  for (const Column& column : definition.columns) EncodeColumn(bytes, definition, column);
  for (const Column& column : definition.columns) AppendName(bytes, column.name);
  for (const RealIndex& index : definition.real_indexes) EncodeRealIndex(bytes, definition, index);
  // The number of an index is that of its tree: each tree has one name here.
  for (const Index& index : definition.indexes) EncodeIndex(bytes, index.real, index);
  for (const Index& index : definition.indexes) AppendName(bytes, index.name);
  EncodeLongColumns(bytes, definition);
  Store32(bytes, 8, static_cast<std::uint32_t>(bytes.size()));
  return bytes;
}

std::size_t DefinitionPageCount(std::size_t length) {
  constexpr std::size_t kPart = kPageSize - kContinuationHeader;
  return length <= kPageSize ? 1 : 1 + (length - kPageSize + kPart - 1) / kPart;
}

void WriteTableDefinition(Pager& pager, const TableDefinition& definition, const Bytes& encoded) {
  ByteSpan rest(encoded);
  for (std::size_t i = 0; i < definition.pages.size(); ++i) {
    const PageEdit page = pager.Edit(definition.pages[i]);
    const std::size_t start = i == 0 ? 0 : kContinuationHeader;
    const std::size_t count = std::min(kPageSize - start, rest.size());
    Copy(page.edit(), start, rest.first(count));
    rest = rest.subspan(count);
    const std::size_t left = kPageSize - start - count;
    const bool last = i + 1 == definition.pages.size();
    Store16(page.edit(), 0, PageMark(PageType::kDefinition));
    Store16(page.edit(), 2, static_cast<std::uint16_t>(left < 8 ? 0 : left - 8));
    Store32(page.edit(), 4, last ? 0 : definition.pages[i + 1]);
  }
}

}  // namespace kestro::jet
