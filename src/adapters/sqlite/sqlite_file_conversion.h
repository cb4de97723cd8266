#pragma once

#include <filesystem>

#include "jet/file_layer.h"

namespace kestro::adapters {

/// True when the file begins like those in which earlier versions kept the contacts: SQLite's own format.
[[nodiscard]] bool IsSqliteFile(const std::filesystem::path& path);

/// Puts a Jet 4.0 file with the same contents in the place of a contacts database of an earlier version. The
/// new file is made beside it, compared with it value by value and takes its name at the end; the old one
/// stays as NAME.sqlite. Whenever the machine stops, one of the two has the name; what is left over of an
/// interrupted run goes with the next one.
///
/// Raises, with nothing changed, when the file is no contacts database, is in use, or cannot be converted.
void ConvertSqliteFile(jet::FileLayer& files, const std::filesystem::path& path);

}  // namespace kestro::adapters
