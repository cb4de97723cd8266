// cti-mdb: looks into a database file without changing it.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/jetfile/system_file_layer.h"
#include "jet/checker.h"
#include "jet/database.h"
#include "jet/error.h"
#include "programs/cti-mdb/dump.h"

namespace {

using kestro::jet::Database;

constexpr int kFindings = 1;
constexpr int kCannotOpen = 2;

constexpr std::string_view kUsage =
    "usage: cti-mdb check FILE        compares everything in the file that must agree\n"
    "       cti-mdb tables FILE       lists the tables: name, rows, TAB between, and why one is read only\n"
    "       cti-mdb dump FILE TABLE   writes the rows, a line a row, comma between, first the column names\n"
    "\n"
    "The file is opened for reading only.\n"
    "Exit status: 0 all is well, 1 a finding or damage, 2 the file (or the table) cannot be opened.\n";

int Check(Database& database) {
  const kestro::jet::CheckResult result = kestro::jet::CheckDatabase(database);
  for (const std::string& finding : result.findings) std::cout << finding << '\n';
  std::cout << result.pages << " pages, " << result.tables << " tables, " << result.rows << " rows, "
            << result.index_entries << " index entries, " << result.findings.size() << " findings\n";
  return result.findings.empty() ? EXIT_SUCCESS : kFindings;
}

int ListTables(Database& database) {
  for (const std::string& name : database.Tables()) {
    const auto table = database.OpenTable(name);
    std::cout << name << '\t' << table->RowCount();
    const std::string& reason = table->definition().read_only_reason;
    if (!reason.empty()) std::cout << "\tread only: " << reason;
    std::cout << '\n';
  }
  return EXIT_SUCCESS;
}

int Run(const std::vector<std::string>& words) {
  kestro::adapters::SystemFileLayer layer;
  std::unique_ptr<Database> database;
  std::shared_ptr<kestro::jet::Table> table;
  try {
    database = Database::Open(layer, words[1], kestro::jet::OpenMode::kReadOnly);
    if (words.size() == 3) table = database->OpenTable(words[2]);
  } catch (const kestro::jet::Error& error) {
    std::cerr << "cti-mdb: " << error.what() << '\n';
    return kCannotOpen;
  }
  if (table != nullptr) {
    kestro::mdb::DumpTable(*table, std::cout);
    return EXIT_SUCCESS;
  }
  return words[0] == "check" ? Check(*database) : ListTables(*database);
}

bool IsUsage(const std::vector<std::string>& words) {
  if (words.size() == 2) return words[0] == "check" || words[0] == "tables";
  return words.size() == 3 && words[0] == "dump";
}

}  // namespace

int main(int argument_count, char* arguments[]) {
  const std::vector<std::string> words(arguments + 1, arguments + argument_count);
  if (words.size() == 1 && (words[0] == "--help" || words[0] == "-h")) {
    std::cout << kUsage;
    return EXIT_SUCCESS;
  }
  if (!IsUsage(words)) {
    std::cerr << kUsage;
    return kCannotOpen;
  }
  try {
    return Run(words);
  } catch (const std::exception& error) {
    std::cerr << "cti-mdb: " << error.what() << '\n';
    return kFindings;
  }
}
