#include "adapters/sqlite/connection_string.h"

#include "adapters/sqlite/sqlite_error.h"
#include "ports/database.h"

namespace kestro::adapters {

std::string_view DataSourceOf(std::string_view connection_string) {
  using ports::kConnectionStringEnd;
  using ports::kConnectionStringStart;
  const bool complete =
      connection_string.size() >= kConnectionStringStart.size() + kConnectionStringEnd.size();
  if (!complete || !connection_string.starts_with(kConnectionStringStart) ||
      !connection_string.ends_with(kConnectionStringEnd)) {
    RaiseDatabaseError("The connection string is not that of a contacts database.");
  }
  std::string_view path = connection_string;
  path.remove_prefix(kConnectionStringStart.size());
  path.remove_suffix(kConnectionStringEnd.size());
  if (path.empty()) RaiseDatabaseError("The connection string names no database file.");
  if (path.find('\0') != std::string_view::npos) {
    RaiseDatabaseError("The path of the database file holds a zero character.");
  }
  return path;
}

}  // namespace kestro::adapters
