#pragma once

#include <ostream>

#include "jet/table.h"

namespace kestro::mdb {

/// All rows as comma-separated lines, the first with the column names. Texts are in double quotes, double
/// quotes within doubled; null is nothing at all; blocks of bytes are hexadecimal.
void DumpTable(const jet::Table& table, std::ostream& output);

}  // namespace kestro::mdb
