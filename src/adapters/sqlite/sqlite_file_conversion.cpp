#include "adapters/sqlite/sqlite_file_conversion.h"

#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

#include "adapters/sqlite/jet_error.h"
#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/sqlite_file_copy.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "jet/journal.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSqliteStart("SQLite format 3\0", 16);

fs::path WithSuffix(fs::path path, const std::string& suffix) { return path += suffix; }

/// A name beside the file that is free, or taken by this very file already.
fs::path BackupPath(const fs::path& path) {
  fs::path backup = WithSuffix(path, ".sqlite");
  for (int number = 2; fs::exists(backup) && !fs::equivalent(backup, path); ++number) {
    backup = WithSuffix(path, ".sqlite-" + std::to_string(number));
  }
  return backup;
}

/// A second name for the file; where the file system knows none, a copy.
void KeepBackup(jet::FileLayer& files, const fs::path& path) {
  const fs::path backup = BackupPath(path);
  if (fs::exists(backup)) return;  // from a run that stopped here
  std::error_code error;
  fs::create_hard_link(path, backup, error);
  if (error) {
    fs::copy_file(path, backup);
    files.Open(EnginePath(backup), jet::FileMode::kReadWrite)->Sync();
  }
  files.SyncFolder(EnginePath(backup));
}

void RemoveDatabase(jet::FileLayer& files, const fs::path& path) {
  files.Remove(EnginePath(path));
  files.Remove(jet::JournalPath(EnginePath(path)));
}

void Convert(jet::FileLayer& files, const fs::path& path) {
  const fs::path fresh = WithSuffix(path, ".converting");
  {
    SqliteFileCopy copy(path);  // nobody else uses the file from here on
    RemoveDatabase(files, fresh);
    try {
      copy.To(files, EnginePath(fresh));
    } catch (...) {
      RemoveDatabase(files, fresh);
      throw;
    }
  }
  KeepBackup(files, path);
  // A journal of this name belongs to a file that is not here any more.
  files.Remove(jet::JournalPath(EnginePath(path)));
  fs::rename(fresh, path);
  files.SyncFolder(EnginePath(path));
}

}  // namespace

bool IsSqliteFile(const fs::path& path) {
  std::array<char, kSqliteStart.size()> start{};
  std::ifstream file(path, std::ios::binary);
  file.read(start.data(), start.size());
  return file.good() && std::string_view(start.data(), start.size()) == kSqliteStart;
}

void ConvertSqliteFile(jet::FileLayer& files, const fs::path& path) {
  const std::string action = "The database of an earlier version cannot be converted: ";
  try {
    Convert(files, fs::canonical(path));
  } catch (const jet::Error& error) {
    RaiseDatabaseError(action + Describe(error));
  } catch (const fs::filesystem_error& error) {
    RaiseDatabaseError(action + error.what());
  }
}

}  // namespace kestro::adapters
