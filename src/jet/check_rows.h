#pragma once

#include <string>
#include <vector>

#include "jet/check_report.h"
#include "jet/storage.h"
#include "jet/table_definition.h"

namespace kestro::jet {

/// Expected entries of the indexes of a table, from its rows: key, page, slot. An index whose keys cannot all
/// be made is left out.
struct ExpectedEntries {
  bool known = true;
  std::vector<std::vector<std::uint8_t>> entries;
};

/// The rows of a table with their long values, and the pages of both. Returns what each index should have.
std::vector<ExpectedEntries> CheckRows(CheckReport& report, Pager& pager, const std::string& table,
                                       const TableDefinition& definition);

/// One index: its pages, order, links, separators, and the entries themselves.
void CheckIndex(CheckReport& report, Storage& storage, const std::string& who,
                const TableDefinition& definition, const RealIndex& index, ExpectedEntries& expected);

}  // namespace kestro::jet
