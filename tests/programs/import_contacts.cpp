// Imports contacts into a database of its own, without a screen.
//
//   import-contacts new DATABASE            makes an empty contacts database
//   import-contacts import DATABASE FILE    prints each count that the window shows, then what it said;
//                                           exit status 1 when the import was not finished
//   import-contacts check DATABASE          prints the number of contacts; exit status 1 when the file is
//   damaged

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/posix_file_system.h"
#include "contacts/database_session.h"
#include "core/system_clock.h"
#include "jet/checker.h"
#include "jet/database.h"
#include "support/import_bench.h"
#include "unit/support/contacts_database.h"

namespace {

using namespace kestro;

constexpr int kMostQuestions = 3;

[[noreturn]] void Fail(std::string_view text) {
  std::cerr << text << std::endl;
  std::exit(1);
}

int Import(const std::string& path, const std::string& file) {
  auto database = test_support::MakeSqlite();
  adapters::PosixFileSystem files(adapters::PathMap(), ".", ".");
  const core::SystemClock clock;
  test::ImportBench bench(database, path, files, clock);
  bench.host().on_control_changed = [&](const forms::Control& control) {
    if (&control == &bench.window().importedContactsLabel) std::cout << bench.Count() << std::endl;
  };
  int questions = 0;
  bench.on_question = [&](const std::string&) {
    return ++questions < kMostQuestions ? ports::BoxAnswer::kYes : ports::BoxAnswer::kNo;
  };
  bench.Import(file);
  for (const auto& box : bench.boxes) std::cout << box << std::endl;
  return bench.boxes.back().find("successfully") == std::string::npos ? 1 : 0;
}

int Check(const std::string& path) {
  {
    const auto database = jet::Database::Open(test_support::Files(), path, jet::OpenMode::kReadWrite);
    const auto result = jet::CheckDatabase(*database);
    if (!result.findings.empty()) Fail("damaged: " + result.findings.front());
  }
  auto database = test_support::MakeSqlite();
  contacts::DatabaseSession session(database, test_support::ConnectionString(path));
  std::cout << session.Query("SELECT COUNT(*) FROM Contact")->Text(0) << std::endl;
  return 0;
}

int Run(const std::vector<std::string>& words) {
  if (words.size() < 2) Fail("import-contacts new|import|check DATABASE [FILE]");
  const std::string path = std::filesystem::absolute(words[1]).string();
  if (words[0] == "import" && words.size() == 3)
    return Import(path, std::filesystem::absolute(words[2]).string());
  if (words[0] == "check") return Check(path);
  if (words[0] != "new") Fail("unknown command " + words[0]);
  test_support::MakeContactsDatabase(path);
  return 0;
}

}  // namespace

int main(int argument_count, char* arguments[]) {
  try {
    return Run({arguments + 1, arguments + argument_count});
  } catch (const std::exception& error) {
    Fail(error.what());
  }
}
