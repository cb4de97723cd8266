#pragma once

#include <vector>

#include "jet/storage.h"
#include "jet/table_definition.h"

namespace kestro::jet {

/// Gives a new table its pages: definition, usage maps, roots of the indexes. `definition` has its columns
/// and indexes, and gets the rest. kValue when the table needs more maps than a page holds.
void CreateTableStorage(Storage& storage, TableDefinition& definition);

/// Gives all pages of a table back. kReadOnly unless its definition is understood.
void DropTableStorage(Storage& storage, const TableDefinition& definition);

}  // namespace kestro::jet
