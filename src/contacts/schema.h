#pragma once

#include <string_view>

#include "ports/database.h"

namespace kestro::contacts {

/// Raised whenever the tables change.
inline constexpr int kSchemaVersion = 1;

/// Makes the tables of a contacts database in an empty one and fills the lists that a user starts with:
/// phone types, positions and countries. All or nothing.
void CreateSchema(ports::Database& database, std::string_view connection_string);

}  // namespace kestro::contacts
