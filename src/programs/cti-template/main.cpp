// cti-template OUTPUT: writes the empty contacts database that the first start copies for the user.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/sqlite/new_database_file.h"
#include "adapters/sqlite/sqlite_database.h"
#include "contacts/schema.h"

namespace {

namespace fs = std::filesystem;

constexpr int kUsageError = 2;

/// A file that is removed again unless it got its final name.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(fs::path path) : path_(std::move(path)) {}
  ~UnfinishedFile() {
    std::error_code ignored;  // after a success there is nothing to remove
    fs::remove(path_, ignored);
  }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  [[nodiscard]] const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

void FillDatabase(kestro::jet::FileLayer& files, const fs::path& path) {
  // The connection string's path is only handed through: it stands for the file itself.
  kestro::adapters::SqliteDatabase database(files, [&path](std::string_view) { return path; });
  const std::string connection_string = std::string(kestro::ports::kConnectionStringStart)
                                            .append("template")
                                            .append(kestro::ports::kConnectionStringEnd);
  kestro::contacts::CreateSchema(database, connection_string);
}

void WriteTemplate(const fs::path& output) {
  fs::path beside = output;
  beside += ".new";
  fs::remove(beside);  // left by a run that was cut short
  const UnfinishedFile file(beside);
  kestro::adapters::SystemFileLayer files;
  kestro::adapters::CreateDatabaseFile(files, file.path());
  FillDatabase(files, file.path());
  fs::permissions(file.path(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                                   fs::perms::others_read);
  fs::rename(file.path(), output);
}

}  // namespace

int main(int argument_count, char* arguments[]) {
  if (argument_count != 2 || std::string_view(arguments[1]).empty()) {
    std::cerr << "usage: cti-template OUTPUT\nWrites an empty contacts database to the file OUTPUT.\n";
    return kUsageError;
  }
  try {
    WriteTemplate(arguments[1]);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "cti-template: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
