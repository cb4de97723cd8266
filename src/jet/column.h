#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kestro::jet {

/// The numbers are those of the file format; a file may contain others.
enum class ColumnType : std::uint8_t {
  kBool = 1,
  kByte = 2,
  kInt16 = 3,
  kInt32 = 4,
  kMoney = 5,
  kFloat = 6,
  kDouble = 7,
  kDate = 8,
  kBinary = 9,
  kText = 10,
  kOle = 11,
  kMemo = 12,
  kGuid = 15,
  kNumeric = 16,
};

struct Column {
  std::string name;  // UTF-8
  ColumnType type = ColumnType::kInt32;
  std::size_t length = 0;  // bytes; of kText twice the number of UTF-16 units; 0 of kMemo and kOle
  bool auto_number = false;
  bool required = false;         // null is refused
  bool allow_empty_text = true;  // kText and kMemo: "" is a value besides null
  bool compressed = false;       // kText and kMemo: short Latin-1 texts take one byte a character

  // --- storage; of no interest outside the engine ---
  std::uint16_t number = 0;          // position of the null bit; what indexes refer to
  std::uint16_t variable_index = 0;  // position in the row's variable table
  std::uint16_t fixed_offset = 0;    // within the row's fixed part
  bool fixed = false;
  std::uint8_t flags = 0;
  std::uint8_t scale = 0;  // kNumeric

  [[nodiscard]] bool IsLong() const { return type == ColumnType::kMemo || type == ColumnType::kOle; }
  [[nodiscard]] bool IsText() const { return type == ColumnType::kMemo || type == ColumnType::kText; }
};

struct IndexColumn {
  std::size_t column = 0;  // position in Table::columns()
  bool ascending = true;
};

/// An index of a table as callers see it.
struct Index {
  std::string name;
  std::vector<IndexColumn> columns;
  bool unique = false;
  bool primary = false;
  bool required = false;      // no null in any of its columns
  bool ignore_nulls = false;  // rows with nothing but nulls in its columns have no entry
  bool searchable = false;    // Table::Search works: one ascending column of type kInt32
  std::size_t real = 0;       // which of the stored trees; several names may share one
};

}  // namespace kestro::jet
