#pragma once

#include "jet/table_definition.h"
#include "jet/table_design.h"

namespace kestro::jet {

/// The definition that a design leads to, without pages. Throws kValue with the reason when it is not
/// possible.
TableDefinition BuildTableDefinition(const TableDesign& design);

/// Numbers the columns in their order and gives them their places in the row; `flags`, `fixed` are set.
void PlaceColumns(TableDefinition& definition);

/// Enters the long columns, in the order of the columns.
void ListLongColumns(TableDefinition& definition);

}  // namespace kestro::jet
