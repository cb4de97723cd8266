#include "adapters/sqlite/sqlite_file_conversion.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/sqlite_handle.h"
#include "base/runtime_error.h"
#include "contacts/cti_contacts.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"
#include "unit/support/sqlite_contacts.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;
using test_support::ConnectionString;
using test_support::Files;
using test_support::SqliteFile;

constexpr const char* kRows = R"(
INSERT INTO Contact (Name, SearchPhone2, PhoneType2, Note, UserField4) VALUES
  ('Jan Novák', '+420602111222', 3, 'Žluťoučký 🤞 ' || replace(hex(zeroblob(20000)), '0', 'ř'), char(10) || ' '),
  ('', '', 99, 'a' || char(0) || 'b', ''), ('malformed ' || CAST(x'C3' AS TEXT), '', -1, '', ''),
  (replace(hex(zeroblob(100)), '0', '🤞'), '+420999', 0, '', ''), ('deleted', '', 0, '', '');
DELETE FROM Contact WHERE Name = 'deleted';
INSERT INTO PhoneType (name, "Order") VALUES ('Work', 1), ('Mobile', 2);
INSERT INTO PhoneLine (Line, Name) VALUES ('21', NULL), ('22', ''), ('23', 'Recepce');
DELETE FROM PhoneLine WHERE Line = '23';
INSERT INTO UserFields VALUES ('a', '', NULL, 'd');
INSERT INTO Position VALUES ('Owner'), ('Buyer');
INSERT INTO Country VALUES ('Česko');
)";

class SqliteFileConversionTest : public testing::Test {
 protected:
  void MakeOld() {
    for (const auto& file : fs::directory_iterator(folder_.path())) fs::remove(file);
    SqliteFile old(path_);
    old.Run(std::string("BEGIN;") + test_support::kSqliteContactTables + kRows + "COMMIT");
  }
  /// All values of all tables, through `connection`.
  static std::vector<std::string> Everything(sqlite3* connection) {
    std::vector<std::string> rows;
    for (
        const char* const query :
        {R"(SELECT id_Contact, Name, SearchPhone1, SearchPhone2, PhoneType1, PhoneType2, Note, UserField4, Email
             FROM Contact ORDER BY id_Contact)",
         "SELECT id, name, \"Order\" FROM PhoneType ORDER BY id", "SELECT * FROM PhoneLine ORDER BY id",
         "SELECT Field1, Field2, Field3, Field4 FROM UserFields", "SELECT Position FROM Position ORDER BY 1",
         "SELECT Country FROM Country"}) {
      sqlite3_stmt* prepared = nullptr;
      EXPECT_EQ(sqlite3_prepare_v2(connection, query, -1, &prepared, nullptr), SQLITE_OK);
      const StatementPointer statement(prepared);
      while (sqlite3_step(prepared) == SQLITE_ROW) rows.push_back(test_support::RowText(prepared));
    }
    return rows;
  }
  std::vector<std::string> Expected() {
    MakeOld();
    auto rows = Everything(SqliteFile(path_).get());
    const auto malformed = rows[2].find('\xC3');
    rows[2].replace(malformed, 1, "\uFFFD");
    return rows;
  }
  std::string ErrorOfOpening(jet::FileLayer& files) {
    try {
      const SqliteHandle handle(files, path_);
      return {};
    } catch (const base::RuntimeError& error) {
      return error.description();
    }
  }

  test_support::TemporaryFolder folder_;
  fs::path path_ = folder_.File("CTIDB.mdb");
  fs::path backup_ = folder_.File("CTIDB.mdb.sqlite");
};

TEST_F(SqliteFileConversionTest, KeepsEveryValueAndTheOldFile) {
  const auto expected = Expected();
  const auto old_bytes = test_support::ReadFile(path_);
  {
    SqliteHandle handle(Files(), path_);
    EXPECT_EQ(Everything(handle.get()), expected);
    EXPECT_EQ(test_support::ReadFile(backup_), old_bytes);
    EXPECT_EQ(folder_.FileCount(), 2);
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    // Numbers of deleted rows are not given again.
    handle.Run("INSERT INTO Contact (Name) VALUES ('new'); INSERT INTO PhoneLine (Line) VALUES ('24')");
    const auto new_rows = handle.statements().Take(
        "SELECT (SELECT MAX(id_Contact) FROM Contact) * 100 + (SELECT MAX(id) FROM PhoneLine)");
    ASSERT_EQ(sqlite3_step(new_rows.get()), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(new_rows.get(), 0), 604);
  }
  auto database = test_support::MakeSqlite();
  contacts::CTIContacts component(database);
  component.SetConnectionString(ConnectionString(path_.string()));
  EXPECT_EQ(component.FindContactsByPhone("+420602111222").at(0).Name, "Jan Novák");
  EXPECT_EQ(component.FindContactsByPhone("+420999").size(), 1U);
}

/// The process ends at a step: at some while the rows are copied, at each of the last ones, when the files
/// change their names. What it leaves opens with everything in it.
TEST_F(SqliteFileConversionTest, SurvivesAnEndInTheMiddle) {
  constexpr int kStride = 9;
  constexpr int kLastSteps = 12;
  const auto expected = Expected();
  test_support::FaultyFiles files(Files());
  int steps = 0;
  files.before_change = [&steps] { ++steps; };
  ConvertSqliteFile(files, path_);
  for (int step = 0; step < steps; step += step + kLastSteps < steps ? kStride : 1) {
    MakeOld();
    const pid_t child = fork();
    if (child == 0) {
      int left = step;
      files.before_change = [&left] {
        if (left-- == 0) _exit(1);
      };
      ConvertSqliteFile(files, path_);
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << step;
    ASSERT_EQ(Everything(SqliteHandle(Files(), path_).get()), expected) << step;
    ASSERT_EQ(folder_.FileCount(), 2) << step;
  }
  EXPECT_GT(steps, 50);
}

TEST_F(SqliteFileConversionTest, AFailureChangesNothing) {
  Expected();
  const auto bytes = test_support::ReadFile(path_);
  test_support::FaultyFiles files(Files());
  int failures = 0;
  for (int step = 0; step < 1000; step += step % 2 == 0 ? 1 : 8) {
    int left = step;
    files.before_change = [&left] {
      if (left-- == 0) throw jet::Error(jet::ErrorKind::kFileSystem, "disk full");
    };
    const auto error = ErrorOfOpening(files);
    if (!IsSqliteFile(path_)) break;
    ++failures;
    ASSERT_NE(error.find("disk full"), std::string::npos) << step << ": " << error;
    ASSERT_EQ(test_support::ReadFile(path_), bytes);
  }
  EXPECT_GT(failures, 10);
}

TEST_F(SqliteFileConversionTest, RefusesWhatCannotBeConverted) {
  SqliteFile(path_).Run("CREATE TABLE Other (a); INSERT INTO Other VALUES (1)");
  EXPECT_EQ(ErrorOfOpening(Files()), "The file is no contacts database.");
  MakeOld();
  {
    SqliteFile other_program(path_);
    other_program.Run("BEGIN IMMEDIATE");
    EXPECT_NE(ErrorOfOpening(Files()).find("locked"), std::string::npos);
  }
  SqliteFile(path_).Run("UPDATE Contact SET PhoneType1 = 5000000000");
  EXPECT_NE(ErrorOfOpening(Files()).find("PhoneType1"), std::string::npos) << ErrorOfOpening(Files());
  fs::permissions(path_, fs::perms::owner_read);
  EXPECT_NE(ErrorOfOpening(Files()).find("permissions"), std::string::npos);
  EXPECT_EQ(folder_.FileCount(), 1);
  // Another backup is not written over.
  MakeOld();
  test_support::WriteFile(backup_, "older");
  EXPECT_EQ(ErrorOfOpening(Files()), "");
  EXPECT_EQ(test_support::ReadFile(backup_), "older");
  EXPECT_TRUE(IsSqliteFile(folder_.File("CTIDB.mdb.sqlite-2")));
}

}  // namespace
}  // namespace kestro::adapters
