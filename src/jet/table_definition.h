#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jet/column.h"
#include "jet/page.h"

namespace kestro::jet {

class Pager;

/// An index tree of a table; one or more Index entries name it.
struct RealIndex {
  std::vector<IndexColumn> columns;
  std::uint8_t flags = 0;
  DataPointer map;      // its pages, the root included
  PageNumber root = 0;  // never changes

  [[nodiscard]] bool IsUnique() const { return (flags & 0x01) != 0; }
  [[nodiscard]] bool IgnoresNulls() const { return (flags & 0x02) != 0; }
  [[nodiscard]] bool IsRequired() const { return (flags & 0x08) != 0; }
};

/// The usage maps of a long column.
struct LongColumnMaps {
  std::size_t column = 0;  // position
  DataPointer owned;
  DataPointer free;
};

/// What the definition pages of a table say. Counters that change with rows are read from the page itself.
struct TableDefinition {
  PageNumber page = 0;  // the first; names the table everywhere
  std::vector<PageNumber> pages;
  bool system = false;
  std::uint16_t max_columns = 0;     // column numbers ever used
  std::uint16_t variable_count = 0;  // entries of a row's variable table
  std::size_t fixed_size = 0;        // of a row's fixed part
  std::vector<Column> columns;
  std::vector<RealIndex> real_indexes;
  std::vector<Index> indexes;
  DataPointer owned;
  DataPointer free;
  std::vector<LongColumnMaps> long_columns;
  std::string read_only_reason;  // what in the definition is not understood; empty: nothing

  [[nodiscard]] std::optional<std::size_t> AutoNumberColumn() const;
  [[nodiscard]] const LongColumnMaps* MapsOf(std::size_t column) const;
};

/// Places on the first definition page.
inline constexpr std::size_t kRowCountAt = 16;
inline constexpr std::size_t kAutoNumberAt = 20;
inline constexpr std::size_t kIndexCountersAt = 63;  // 12 bytes a real index; the second dword: distinct keys
inline constexpr std::size_t kIndexCountersSize = 12;

/// Throws kDamaged. Things that are legal but not supported lead to `read_only_reason`.
TableDefinition ReadTableDefinition(Pager& pager, PageNumber page);

/// The definition as one string; `definition` complete but for `pages`.
std::vector<std::uint8_t> EncodeTableDefinition(const TableDefinition& definition);

/// How many pages a definition of this length takes.
std::size_t DefinitionPageCount(std::size_t length);

/// Writes the string over `definition.pages` (allocated, as many as it takes).
void WriteTableDefinition(Pager& pager, const TableDefinition& definition,
                          const std::vector<std::uint8_t>& encoded);

/// Reads the pages of a definition; throws kDamaged for a chain that is not one.
std::vector<std::uint8_t> ReadDefinitionBytes(Pager& pager, PageNumber first, std::vector<PageNumber>& pages);

}  // namespace kestro::jet
