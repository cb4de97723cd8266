#pragma once

#include <span>
#include <string>
#include <string_view>

#include "jet/table_design.h"

namespace kestro::adapters {

/// The table that "CREATE VIRTUAL TABLE name USING jet (definition, ...)" asks for. A definition is one of
///
///   name type [PRIMARY KEY] [NOT NULL]
///   INDEX name (column, ...) [IGNORE NULL]          rows with nothing but nulls have no entry
///
/// with the types AUTONUMBER, INTEGER (32 bits), TEXT(n) (at most n UTF-16 units, n up to 255), MEMO (any
/// length), BOOLEAN, DOUBLE, MONEY, DATETIME and OLE. A name in double quotes may hold anything. Texts may
/// be empty and are stored compressed where possible. Throws jet::Error (kValue) for anything else.
[[nodiscard]] jet::TableDesign ParseTableDesign(std::string_view table,
                                                std::span<const std::string_view> definitions);

}  // namespace kestro::adapters
