#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "jet/column.h"

namespace kestro::jet {

/// A column of a table to be created. kGuid and kNumeric cannot be created.
struct ColumnDesign {
  std::string name;
  ColumnType type = ColumnType::kInt32;
  std::size_t characters = 255;  // kText: most UTF-16 units, 1 to 255; kBinary: most bytes, 1 to 510
  bool auto_number = false;      // kInt32 only, one a table
  bool required = false;
  bool allow_empty_text = true;
};

/// An index of a table to be created, over columns of type kInt32, ascending.
struct IndexDesign {
  std::string name;
  std::vector<std::string> columns;
  bool unique = false;
  bool primary = false;  // implies unique and required; at most one a table
  bool ignore_nulls = false;
};

struct TableDesign {
  std::string name;  // at most 64 characters, of those that the catalogue can sort
  std::vector<ColumnDesign> columns;
  std::vector<IndexDesign> indexes;
};

}  // namespace kestro::jet
