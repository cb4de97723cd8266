#pragma once

#include <string>
#include <vector>

#include "jet/bytes.h"
#include "jet/column.h"
#include "jet/value.h"

namespace kestro::jet {

/// The property block that the catalogue keeps with a table.

/// Takes over what matters for changing rows: required columns and empty texts. Returns why rows must not be
/// changed (rules that are expressions), empty when there is nothing of that kind. Throws kDamaged.
std::string ApplyProperties(ByteSpan block, std::vector<Column>& columns);

/// The block for a new table; empty when every column has the usual properties.
Blob MakeProperties(const std::vector<Column>& columns);

}  // namespace kestro::jet
