#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/sqlite/new_database_file.h"
#include "adapters/sqlite/sqlite_database.h"
#include "contacts/schema.h"
#include "unit/support/temporary_folder.h"

namespace kestro::test_support {

inline std::string ConnectionString(std::string_view path) {
  return std::string(ports::kConnectionStringStart).append(path).append(ports::kConnectionStringEnd);
}

/// The file layer of the machine, for all tests.
inline jet::FileLayer& Files() {
  static adapters::SystemFileLayer files;
  return files;
}

/// The database component; a system path is taken for a native one.
inline adapters::SqliteDatabase MakeSqlite(jet::FileLayer& files = Files()) {
  return {files, [](std::string_view path) { return std::filesystem::path(path); }};
}

/// Makes the file of a new contacts database.
inline void MakeContactsDatabase(const std::filesystem::path& path) {
  adapters::CreateDatabaseFile(Files(), path);
  auto database = MakeSqlite();
  contacts::CreateSchema(database, ConnectionString(path.string()));
}

/// A new contacts database in a folder of its own.
class ContactsDatabase {
 public:
  ContactsDatabase() { MakeContactsDatabase(path()); }

  [[nodiscard]] std::filesystem::path path() const { return folder_.File("CTIDB.mdb"); }
  [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }
  [[nodiscard]] std::string connection_string() const { return ConnectionString(path().string()); }
  [[nodiscard]] ports::Database& database() { return database_; }

 private:
  TemporaryFolder folder_;
  adapters::SqliteDatabase database_ = MakeSqlite();
};

}  // namespace kestro::test_support
