#pragma once

#include <span>
#include <string_view>

#include "ports/database.h"

namespace kestro::contacts {

/// The statements that make the tables of a contacts database, all empty. No version is stored: what a later
/// version adds is told by its columns.
[[nodiscard]] std::span<const std::string_view> TableStatements();

/// Makes the tables of a contacts database in an empty one and fills the lists that a user starts with:
/// phone types, positions and countries. All or nothing.
void CreateSchema(ports::Database& database, std::string_view connection_string);

}  // namespace kestro::contacts
