#pragma once

#include <string>
#include <vector>

#include "jet/check_report.h"
#include "jet/storage.h"
#include "jet/table_definition.h"

namespace kestro::jet {

/// Slots in order, free-space word exact. Throws kDamaged for what cannot be read at all.
void CheckDataPage(CheckReport& report, const std::string& where, ByteSpan bytes);

/// The pages of a definition: chain, free-space words.
void CheckDefinitionPages(CheckReport& report, Pager& pager, const std::string& table,
                          const TableDefinition& definition);

/// A pair of maps of data pages: their rows, the pages with this owner, those with room among them. Returns
/// the pages that are fit to be looked into.
std::vector<PageNumber> CheckDataMaps(CheckReport& report, Pager& pager, const std::string& who,
                                      DataPointer owned, DataPointer free, std::uint32_t owner);

/// The pages that a map needs for itself.
void ClaimMap(CheckReport& report, Pager& pager, const std::string& who, DataPointer where);

/// After all others: no page without a user that is not free, no free page with a user.
void CheckFreePages(CheckReport& report, const Storage& storage);

}  // namespace kestro::jet
