#pragma once

#include <memory>

#include <sqlite3.h>

#include "adapters/sqlite/jet_session.h"

namespace kestro::adapters {

/// Makes every table of the file a table of the connection: SQL works on them as on SQLite's own, with these
/// differences. A new table is made with "CREATE VIRTUAL TABLE name USING jet (...)" (see jet_design.h); none
/// is dropped or altered. Texts compare by TextOrder unless a statement says otherwise. Columns that an
/// insertion does not name become null. Tables whose names SQLite keeps for itself ("sqlite_...") are left
/// out. Raises what fails.
void AttachJetTables(sqlite3* connection, const std::shared_ptr<JetSession>& session);

}  // namespace kestro::adapters
