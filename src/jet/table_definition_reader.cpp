#include <algorithm>
#include <string>

#include "jet/bytes.h"
#include "jet/error.h"
#include "jet/index_key.h"
#include "jet/pager.h"
#include "jet/row_layout.h"
#include "jet/stored_text.h"
#include "jet/table_definition.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kHeaderSize = 63;
constexpr std::size_t kContinuationHeader = 8;
constexpr std::size_t kLongestDefinition = std::size_t{1} << 20;
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kMostIndexes = 255;
constexpr std::size_t kIndexColumns = 10;
constexpr std::uint32_t kGeneralOrder = 0x0409;

[[noreturn]] void ThrowDamaged(const char* what) {
  throw Error(ErrorKind::kDamaged, std::string("A table definition is damaged: ") + what);
}

// Takes pieces from the front of the definition, one after the other.
class Reader {
 public:
  Reader(ByteSpan bytes, std::size_t at) : bytes_(bytes), at_(at) {
    if (at > bytes.size()) ThrowDamaged("it ends too early");
  }

  ByteSpan Take(std::size_t count) {
    if (count > bytes_.size() - at_) ThrowDamaged("it ends too early");
    at_ += count;
    return bytes_.subspan(at_ - count, count);
  }
  std::string TakeName() {
    const std::size_t length = Load16(Take(2), 0);
    return DecodeUtf16(Take(length));
  }
  [[nodiscard]] std::size_t left() const { return bytes_.size() - at_; }

 private:
  ByteSpan bytes_;
  std::size_t at_;
};

void Note(TableDefinition& definition, const std::string& reason) {
  if (definition.read_only_reason.empty()) definition.read_only_reason = reason;
}

bool IsKnown(ColumnType type) {
  const auto number = static_cast<int>(type);
  return (number >= 1 && number <= 12) || number == 15 || number == 16;
}

Column ReadColumn(ByteSpan record) {
  Column column;
  column.type = static_cast<ColumnType>(record[0]);
  column.number = Load16(record, 5);
  column.variable_index = Load16(record, 7);
  column.flags = record[15];
  column.fixed = (column.flags & 0x01) != 0;
  column.auto_number = (column.flags & 0x04) != 0;
  column.compressed = (record[16] & 0x01) != 0;
  column.fixed_offset = Load16(record, 21);
  column.length = Load16(record, 23);
  if (column.type == ColumnType::kNumeric) column.scale = record[12];
  return column;
}

void CheckColumn(TableDefinition& definition, const Column& column, ByteSpan record) {
  if (column.number >= definition.max_columns) ThrowDamaged("a column number is too high");
  const std::size_t size = FixedSize(column.type);
  if (column.fixed && column.type != ColumnType::kBool) {
    if (column.IsLong()) ThrowDamaged("a long column is in the fixed part");
    const std::size_t end = column.fixed_offset + (size != 0 ? size : column.length);
    if (end > kPageSize) ThrowDamaged("a column lies outside the row");
    definition.fixed_size = std::max(definition.fixed_size, end);
    if (size == 0) Note(definition, "The column \"" + column.name + "\" has a fixed place and no fixed size");
  } else if (!column.fixed && column.variable_index >= definition.variable_count) {
    ThrowDamaged("a variable column has no place");
  }
  if (!IsKnown(column.type)) Note(definition, "The column \"" + column.name + "\" has an unknown type");
  if (column.type == ColumnType::kNumeric) {
    Note(definition, "The column \"" + column.name + "\" is a decimal number, which can only be read");
  }
  if ((column.flags & 0x48) != 0 || Load32(record, 17) != 0) {
    Note(definition, "The column \"" + column.name + "\" has properties that are not supported");
  }
  if (column.auto_number && (column.type != ColumnType::kInt32)) {
    Note(definition, "The numbering of the column \"" + column.name + "\" is not supported");
  }
  if (column.name.starts_with("s_") || column.name.starts_with("Gen_")) {
    Note(definition, "The table takes part in a replication");
  }
}

void ReadColumns(TableDefinition& definition, Reader& reader, std::size_t count, std::vector<bool>& general) {
  const ByteSpan records = reader.Take(count * 25);
  std::vector<bool> seen(definition.max_columns);
  for (std::size_t i = 0; i < count; ++i) {
    const ByteSpan record = records.subspan(25 * i, 25);
    Column column = ReadColumn(record);
    column.name = reader.TakeName();
    CheckColumn(definition, column, record);
    if (seen[column.number]) ThrowDamaged("two columns have the same number");
    seen[column.number] = true;
    general.push_back(Load32(record, 11) == kGeneralOrder);
    definition.columns.push_back(std::move(column));
  }
}

std::size_t ColumnPosition(const TableDefinition& definition, std::size_t number) {
  for (std::size_t i = 0; i < definition.columns.size(); ++i) {
    if (definition.columns[i].number == number) return i;
  }
  ThrowDamaged("an index or a map names a column that does not exist");
}

RealIndex ReadRealIndex(TableDefinition& definition, ByteSpan record) {
  RealIndex index;
  for (std::size_t i = 0; i < kIndexColumns; ++i) {
    const std::uint16_t number = Load16(record, 4 + 3 * i);
    if (number == 0xFFFF) continue;
    index.columns.push_back({ColumnPosition(definition, number), record[4 + 3 * i + 2] != 0});
  }
  index.map = DataPointer::FromStored(Load32(record, 34));
  index.root = Load32(record, 38);
  index.flags = record[46];
  if (index.columns.empty()) ThrowDamaged("an index has no columns");
  if ((index.flags & 0x74) != 0) Note(definition, "An index has properties that are not supported");
  return index;
}

void CheckTextOrder(TableDefinition& definition, const RealIndex& index, const std::vector<bool>& general) {
  for (const IndexColumn& part : index.columns) {
    if (definition.columns[part.column].IsText() && !general[part.column]) {
      Note(definition, "A text index has a sort order that is not supported");
    }
  }
}

bool IsSearchable(const TableDefinition& definition, const RealIndex& real) {
  return real.columns.size() == 1 && real.columns[0].ascending &&
         definition.columns[real.columns[0].column].type == ColumnType::kInt32;
}

Index ReadIndex(TableDefinition& definition, ByteSpan record) {
  const std::uint32_t number = Load32(record, 8);
  if (number >= definition.real_indexes.size()) ThrowDamaged("an index has no tree");
  const RealIndex& real = definition.real_indexes[number];
  Index index;
  index.real = number;
  index.columns = real.columns;
  index.unique = real.IsUnique();
  index.required = real.IsRequired();
  index.ignore_nulls = real.IgnoresNulls();
  index.primary = record[23] == 1;
  index.searchable = IsSearchable(definition, real);
  if (record[23] > 1 || Load32(record, 17) != 0) {
    Note(definition, "The table is part of a relationship, whose rules are not supported");
  }
  return index;
}

void ReadIndexes(TableDefinition& definition, Reader& reader, std::size_t logical, std::size_t real,
                 const std::vector<bool>& general) {
  for (std::size_t i = 0; i < real; ++i) {
    definition.real_indexes.push_back(ReadRealIndex(definition, reader.Take(52)));
    CheckTextOrder(definition, definition.real_indexes.back(), general);
    const std::string_view problem = KeyTypeProblem(definition, definition.real_indexes.back());
    if (!problem.empty()) Note(definition, std::string(problem));
  }
  const ByteSpan records = reader.Take(28 * logical);
  for (std::size_t i = 0; i < logical; ++i) {
    definition.indexes.push_back(ReadIndex(definition, records.subspan(28 * i, 28)));
  }
  for (Index& index : definition.indexes) index.name = reader.TakeName();
}

void ReadLongColumns(TableDefinition& definition, Reader& reader) {
  for (;;) {
    const std::uint16_t number = Load16(reader.Take(2), 0);
    if (number == 0xFFFF) break;
    const ByteSpan maps = reader.Take(8);
    LongColumnMaps entry;
    entry.column = ColumnPosition(definition, number);
    entry.owned = DataPointer::FromStored(Load32(maps, 0));
    entry.free = DataPointer::FromStored(Load32(maps, 4));
    if (definition.long_columns.size() >= kMostColumns) ThrowDamaged("too many long columns");
    definition.long_columns.push_back(entry);
  }
  if (reader.left() != 0) ThrowDamaged("it is longer than its parts");
  for (std::size_t i = 0; i < definition.columns.size(); ++i) {
    const Column& column = definition.columns[i];
    if (column.IsLong() && definition.MapsOf(i) == nullptr) {
      Note(definition, "The column \"" + column.name + "\" has no room for long values");
    }
  }
}

}  // namespace

std::vector<std::uint8_t> ReadDefinitionBytes(Pager& pager, PageNumber first,
                                              std::vector<PageNumber>& pages) {
  std::vector<std::uint8_t> bytes;
  std::size_t length = 0;
  for (PageNumber next = first; next != 0;) {
    const PageRef page = pager.Read(next);
    if (!page.Is(PageType::kDefinition)) ThrowDamaged("a page of it is something else");
    if (pages.empty()) {
      length = Load32(page.bytes(), 8);
      if (length < kHeaderSize || length > kLongestDefinition) ThrowDamaged("its length is impossible");
    }
    const ByteSpan part = page.bytes().subspan(pages.empty() ? 0 : kContinuationHeader);
    bytes.insert(bytes.end(), part.begin(), part.end());
    pages.push_back(next);
    if (bytes.size() >= length) break;
    next = Load32(page.bytes(), 4);
  }
  if (pages.empty() || bytes.size() < length) ThrowDamaged("pages are missing");
  bytes.resize(length);
  return bytes;
}

TableDefinition ReadTableDefinition(Pager& pager, PageNumber page) {
  TableDefinition definition;
  definition.page = page;
  const std::vector<std::uint8_t> bytes = ReadDefinitionBytes(pager, page, definition.pages);
  if (bytes[40] != 0x4E && bytes[40] != 0x53) ThrowDamaged("its kind is unknown");
  definition.system = bytes[40] == 0x53;
  definition.max_columns = Load16(bytes, 41);
  definition.variable_count = Load16(bytes, 43);
  const std::size_t columns = Load16(bytes, 45);
  const std::uint32_t logical = Load32(bytes, 47);
  const std::uint32_t real = Load32(bytes, 51);
  if (columns > definition.max_columns || definition.max_columns > kMostColumns ||
      definition.variable_count > kMostColumns || logical > kMostIndexes || real > kMostIndexes) {
    ThrowDamaged("its counts are impossible");
  }
  definition.owned = DataPointer::FromStored(Load32(bytes, 55));
  definition.free = DataPointer::FromStored(Load32(bytes, 59));
  if (definition.owned.IsNone() || definition.free.IsNone()) ThrowDamaged("its usage maps are missing");
  if (Load8(bytes, 24) != 1) Note(definition, "The table has properties that are not supported");
  Reader reader(bytes, kIndexCountersAt + kIndexCountersSize * real);
  std::vector<bool> general;
  ReadColumns(definition, reader, columns, general);
  ReadIndexes(definition, reader, logical, real, general);
  ReadLongColumns(definition, reader);
  return definition;
}

std::optional<std::size_t> TableDefinition::AutoNumberColumn() const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].auto_number && columns[i].type == ColumnType::kInt32) return i;
  }
  return std::nullopt;
}

const LongColumnMaps* TableDefinition::MapsOf(std::size_t column) const {
  const auto found = std::ranges::find(long_columns, column, &LongColumnMaps::column);
  return found == long_columns.end() ? nullptr : &*found;
}

}  // namespace kestro::jet
