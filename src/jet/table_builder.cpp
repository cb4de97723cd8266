#include "jet/table_builder.h"

#include <algorithm>
#include <string_view>

#include "jet/error.h"
#include "jet/row_layout.h"
#include "jet/stored_text.h"
#include "jet/text_key.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kLongestName = 64;  // UTF-16 units
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kMostIndexes = 32;
constexpr std::size_t kMostIndexColumns = 10;
constexpr std::size_t kLongestText = 255;    // characters
constexpr std::size_t kLongestBinary = 510;  // bytes
constexpr std::size_t kLongestFixedPart = 2000;

constexpr std::uint8_t kFixedFlags = 0x03;
constexpr std::uint8_t kVariableFlags = 0x02;
constexpr std::uint8_t kAutoNumberFlag = 0x04;

[[noreturn]] void Refuse(const std::string& reason) { throw Error(ErrorKind::kValue, reason); }

std::string Folded(std::string_view name) {
  std::string folded(name);
  for (char& c : folded) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c;
  return folded;
}

void CheckName(const std::string& name) {
  std::vector<std::uint8_t> stored;
  const std::size_t units = AppendTextBytes(name, TextForm::kPlain, stored);
  const bool has_control = std::ranges::any_of(name, [](char c) { return c >= 0 && c < 0x20; });
  if (units == 0 || units > kLongestName || name.front() == ' ' || has_control ||
      name.find_first_of(".!`[]") != std::string::npos) {
    Refuse("\"" + name + "\" cannot be a name");
  }
}

template <typename Named>
void CheckNames(const std::vector<Named>& all) {
  std::vector<std::string> names;
  for (const Named& one : all) {
    CheckName(one.name);
    names.push_back(Folded(one.name));
  }
  std::ranges::sort(names);
  if (std::ranges::adjacent_find(names) != names.end()) Refuse("A name is used twice in a table");
}

std::size_t LengthOf(const ColumnDesign& design) {
  switch (design.type) {
    case ColumnType::kText:
      if (design.characters == 0 || design.characters > kLongestText)
        Refuse("A text column has a wrong length");
      return 2 * design.characters;
    case ColumnType::kBinary:
      if (design.characters == 0 || design.characters > kLongestBinary) {
        Refuse("A binary column has a wrong length");
      }
      return design.characters;
    case ColumnType::kBool:
      return 1;
    default:
      return FixedSize(design.type);
  }
}

Column BuildColumn(const ColumnDesign& design) {
  const auto number = static_cast<int>(design.type);
  if (number < 1 || number > 12) Refuse("A column of this type cannot be created");
  Column column;
  column.name = design.name;
  column.type = design.type;
  column.length = LengthOf(design);
  column.auto_number = design.auto_number;
  column.required = design.required;
  column.allow_empty_text = design.allow_empty_text;
  column.compressed = column.IsText();
  column.fixed = design.type == ColumnType::kBool || FixedSize(design.type) > 0;
  column.flags = column.fixed ? kFixedFlags : kVariableFlags;
  if (design.auto_number) {
    if (design.type != ColumnType::kInt32) Refuse("Only a column of type INT32 can number rows");
    column.flags |= kAutoNumberFlag;
  }
  return column;
}

std::size_t IndexedColumn(const TableDefinition& definition, const std::string& name) {
  const auto found = std::ranges::find_if(
      definition.columns, [&](const Column& column) { return Folded(column.name) == Folded(name); });
  if (found == definition.columns.end()) Refuse("An index names the unknown column \"" + name + "\"");
  if (found->type != ColumnType::kInt32) Refuse("Only columns of type INT32 can be in an index");
  return static_cast<std::size_t>(found - definition.columns.begin());
}

void AddIndex(TableDefinition& definition, const IndexDesign& design) {
  if (design.columns.empty() || design.columns.size() > kMostIndexColumns) {
    Refuse("An index has no columns, or too many");
  }
  RealIndex real;
  for (const std::string& name : design.columns)
    real.columns.push_back({IndexedColumn(definition, name), true});
  real.flags = 0x80;
  if (design.unique || design.primary) real.flags |= 0x01;
  if (design.ignore_nulls) real.flags |= 0x02;
  if (design.primary) real.flags |= 0x08;
  Index index;
  index.name = design.name;
  index.columns = real.columns;
  index.unique = real.IsUnique();
  index.primary = design.primary;
  index.required = real.IsRequired();
  index.ignore_nulls = real.IgnoresNulls();
  index.searchable = real.columns.size() == 1;
  index.real = definition.real_indexes.size();
  definition.real_indexes.push_back(std::move(real));
  definition.indexes.push_back(std::move(index));
}

void CheckDesign(const TableDesign& design) {
  CheckName(design.name);
  CheckNames(design.columns);
  CheckNames(design.indexes);
  IndexKey key;
  if (!AppendTextKey(design.name, key)) Refuse("The table's name has characters that cannot be sorted");
  if (design.columns.empty() || design.columns.size() > kMostColumns)
    Refuse("A table needs 1 to 255 columns");
  if (design.indexes.size() > kMostIndexes) Refuse("A table cannot have more than 32 indexes");
  if (std::ranges::count_if(design.columns, &ColumnDesign::auto_number) > 1) {
    Refuse("A table cannot have more than one column that numbers rows");
  }
  if (std::ranges::count_if(design.indexes, &IndexDesign::primary) > 1)
    Refuse("A table has one primary key only");
}

}  // namespace

void PlaceColumns(TableDefinition& definition) {
  std::uint16_t number = 0;
  std::uint16_t variables = 0;
  std::size_t offset = 0;
  for (Column& column : definition.columns) {
    column.number = number++;
    if (column.fixed) {
      column.fixed_offset = static_cast<std::uint16_t>(offset);
      offset += FixedSize(column.type);
    } else {
      column.variable_index = variables++;
    }
  }
  definition.max_columns = number;
  definition.variable_count = variables;
  definition.fixed_size = offset;
}

void ListLongColumns(TableDefinition& definition) {
  for (std::size_t i = 0; i < definition.columns.size(); ++i) {
    if (definition.columns[i].IsLong()) definition.long_columns.push_back({i, {}, {}});
  }
}

TableDefinition BuildTableDefinition(const TableDesign& design) {
  CheckDesign(design);
  TableDefinition definition;
  for (const ColumnDesign& column : design.columns) definition.columns.push_back(BuildColumn(column));
  PlaceColumns(definition);
  if (definition.fixed_size == 0) Refuse("A table needs a column of a fixed size");
  if (definition.fixed_size > kLongestFixedPart) Refuse("The columns of fixed size are too long");
  for (const IndexDesign& index : design.indexes) AddIndex(definition, index);
  std::ranges::sort(definition.indexes, {}, [](const Index& index) { return Folded(index.name); });
  ListLongColumns(definition);
  return definition;
}

}  // namespace kestro::jet
