#pragma once

#include <string_view>

namespace kestro::adapters {

/// Path (system path) of the database file that a connection string names. The path stands between the
/// known start and end without quotes, so any ";" inside belongs to it. Raises for any other string and
/// for a path that is empty or holds a zero character.
[[nodiscard]] std::string_view DataSourceOf(std::string_view connection_string);

}  // namespace kestro::adapters
