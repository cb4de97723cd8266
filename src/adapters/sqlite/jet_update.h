#pragma once

#include <cstdint>
#include <span>

#include <sqlite3.h>

#include "adapters/sqlite/jet_table.h"

namespace kestro::adapters {

/// xUpdate: deletes, inserts or changes one row (see SQLite's description of the arguments). `rowid` receives
/// that of a new row.
void ChangeRow(const JetTable& table, std::span<sqlite3_value*> arguments, sqlite3_int64& rowid);

}  // namespace kestro::adapters
