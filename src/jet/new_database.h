#pragma once

#include "jet/storage.h"

namespace kestro::jet {

/// Writes an empty database (its system tables and their rows) into an empty file, within a transaction.
/// `now`: days since 1899-12-30.
void FillNewDatabase(Storage& storage, double now);

}  // namespace kestro::jet
