#include "adapters/sqlite/sqlite_database.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/connection_string.h"
#include "support/error_number.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"
#include "unit/support/recordset_contract.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;
using test_support::ConnectionString;
using test_support::Files;
using test_support::MakeContactsDatabase;
using test_support::TemporaryFolder;
using test_support::WriteFile;

using test::ErrorNumberOf;

class SqliteDatabaseTest : public testing::Test {
 protected:
  std::unique_ptr<ports::Connection> Open(const fs::path& path) {
    auto connection = database_.CreateConnection();
    connection->Open(ConnectionString(path.string()), {}, {}, ports::Connection::kConnectUnspecified);
    return connection;
  }
  std::unique_ptr<ports::Recordset> Execute(ports::Connection& connection, std::string_view text,
                                            const std::vector<std::string_view>& values = {}) {
    const auto command = database_.CreateCommand();
    command->SetCommandText(text);
    command->SetActiveConnection(connection);
    for (const auto value : values) command->AppendParameter(value);
    return command->Execute(ports::Command::kExecuteUnspecified);
  }
  static std::vector<std::string> Column(ports::Recordset& rows) {
    std::vector<std::string> texts;
    for (; !rows.AtEnd(); rows.MoveNext()) texts.emplace_back(rows.Text(0));
    return texts;
  }
  std::vector<std::string> Lines(ports::Connection& connection) {
    return Column(*Execute(connection, "SELECT Line FROM PhoneLine ORDER BY id"));
  }
  void AddLine(ports::Connection& connection, std::string_view line) {
    Execute(connection, "INSERT INTO PhoneLine (Line) VALUES (?)", {line});
  }
  fs::path NewDatabase(std::string_view name = "CTIDB.mdb") {
    auto path = folder_.File(name);
    MakeContactsDatabase(path);
    return path;
  }

  TemporaryFolder folder_;
  SqliteDatabase database_ = test_support::MakeSqlite();
};

TEST(ConnectionString, GivesThePathBetweenStartAndEnd) {
  const std::string path = R"(C:\My data; all\a;Persist Security Info=False.mdb)";
  EXPECT_EQ(DataSourceOf(ConnectionString(path)), path);
  for (const auto& text : {std::string(), std::string("Data Source=x"), ConnectionString(""),
                           ConnectionString("a") + ";", std::string(ports::kConnectionStringStart) + "a",
                           " " + ConnectionString("a"), ConnectionString(std::string_view("a\0b", 3))}) {
    EXPECT_EQ(ErrorNumberOf([&] { return DataSourceOf(text); }), base::kDatabaseError) << text;
  }
}

TEST_F(SqliteDatabaseTest, RefusesWhatIsNoDatabaseAndMakesNoFile) {
  const auto whole = test_support::ReadFile(NewDatabase("whole.mdb"));
  WriteFile(folder_.File("text.mdb"), std::string(5000, 'x'));
  WriteFile(folder_.File("short.mdb"), "x");
  WriteFile(folder_.File("empty.mdb"), "");
  WriteFile(folder_.File("truncated.mdb"), std::string_view(whole).substr(0, whole.size() / 2));
  WriteFile(folder_.File("first page.mdb"), std::string_view(whole).substr(0, 4096));
  WriteFile(folder_.File("part of a page.mdb"), std::string_view(whole).substr(0, 1000));
  WriteFile(folder_.File("header.mdb"), whole.substr(0, 100) + std::string(whole.size() - 100, '\x5A'));
  fs::create_directory(folder_.File("folder.mdb"));
  const auto count = folder_.FileCount();
  for (const auto* const name :
       {"missing.mdb", "text.mdb", "short.mdb", "empty.mdb", "truncated.mdb", "first page.mdb",
        "part of a page.mdb", "header.mdb", "folder.mdb", "missing/CTIDB.mdb", "text.mdb/CTIDB.mdb"}) {
    EXPECT_EQ(ErrorNumberOf([&] { Open(folder_.File(name)); }), base::kDatabaseError) << name;
    EXPECT_EQ(folder_.FileCount(), count) << name;
  }
}

TEST_F(SqliteDatabaseTest, NoticesAReplacedAndARemovedFile) {
  const auto path = NewDatabase();
  const auto old_connection = Open(path);
  AddLine(*old_connection, "11");
  NewDatabase("other.mdb");
  AddLine(*Open(folder_.File("other.mdb")), "22");
  fs::rename(folder_.File("other.mdb"), path);
  EXPECT_EQ(Lines(*Open(path)), std::vector<std::string>{"22"});
  EXPECT_EQ(Lines(*old_connection), std::vector<std::string>{"11"});
  fs::remove(path);
  EXPECT_EQ(ErrorNumberOf([&] { Open(path); }), base::kDatabaseError);
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(SqliteDatabaseTest, ReadsAReadOnlyFileAndWritesWhenItIsWritableAgain) {
  const auto path = NewDatabase();
  AddLine(*Open(path), "11");
  fs::permissions(path, fs::perms::owner_read);
  EXPECT_EQ(Lines(*Open(path)), std::vector<std::string>{"11"});
  EXPECT_EQ(ErrorNumberOf([&] { AddLine(*Open(path), "22"); }), base::kDatabaseError);
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  AddLine(*Open(path), "33");
  EXPECT_EQ(Lines(*Open(path)), (std::vector<std::string>{"11", "33"}));
}

TEST_F(SqliteDatabaseTest, TheFileAndItsJournalAreTheUsersAlone) {
  const mode_t before = ::umask(0);
  const auto path = NewDatabase();
  const auto user_only = fs::perms::owner_read | fs::perms::owner_write;
  test_support::FaultyFiles files(Files());
  int seen = 0;
  files.before_change = [&] {
    const auto journal = fs::status(path.string() + ".journal");
    if (!fs::exists(journal)) return;
    ++seen;
    EXPECT_EQ(user_only, journal.permissions());
  };
  SqliteHandle(files, path).Run("INSERT INTO PhoneLine (Line) VALUES ('22')");
  ::umask(before);
  EXPECT_EQ(user_only, fs::status(path).permissions());
  EXPECT_GT(seen, 0);
  EXPECT_EQ(folder_.FileCount(), 1) << "the journal is gone";
}

TEST_F(SqliteDatabaseTest, ReportsAFileInUseByAnotherProgram) {
  const auto path = NewDatabase();
  const auto raised = [&] {
    try {
      AddLine(*Open(path), "11");
      return std::string();
    } catch (const base::RuntimeError& error) {
      return error.description();
    }
  };
  {
    const SqliteHandle other_program(Files(), path);
    EXPECT_NE(raised().find("in use by another program"), std::string::npos) << raised();
  }
  EXPECT_EQ(raised(), "");
  // From now on the other way round, until another file is opened.
  EXPECT_EQ(ErrorNumberOf([&] { SqliteHandle(Files(), path); }), base::kDatabaseError);
  Open(NewDatabase("other.mdb"));
  EXPECT_EQ(ErrorNumberOf([&] { SqliteHandle(Files(), path); }), 0);
}

TEST_F(SqliteDatabaseTest, ConnectionsToOneFileShareItsTransaction) {
  const auto path = NewDatabase();
  const auto writer = Open(path);
  writer->BeginTransaction();
  AddLine(*writer, "11");
  EXPECT_EQ(Lines(*Open(path)).size(), 1U);  // reads what is not committed; closing it ends nothing
  writer->CommitTransaction();
  writer->BeginTransaction();
  AddLine(*writer, "22");
  writer->Close();  // without a commit
  EXPECT_EQ(Lines(*Open(path)), std::vector<std::string>{"11"});
}

TEST_F(SqliteDatabaseTest, AFileInUseIsNotOpenedASecondTimeUnderAnotherName) {
  const auto path = NewDatabase();
  const auto connection = Open(path);
  fs::create_hard_link(path, folder_.File("same.mdb"));
  AddLine(*Open(folder_.File("same.mdb")), "11");
  EXPECT_EQ(Lines(*connection), std::vector<std::string>{"11"});
}

TEST_F(SqliteDatabaseTest, ReportsTheKeyOfTheConnectionsOwnInsert) {
  const auto path = NewDatabase();
  const auto one = Open(path);
  const auto other = Open(path);
  AddLine(*one, "11");
  AddLine(*other, "22");
  Lines(*one);
  EXPECT_EQ(one->LastInsertedKey(), 1);
  EXPECT_EQ(other->LastInsertedKey(), 2);
}

TEST_F(SqliteDatabaseTest, KeepsAFewPreparedStatements) {
  const SqliteHandle unused(Files(), NewDatabase());
  StatementCache cache(unused.get());
  {
    const auto one = cache.Take("SELECT 1");
    const auto other = cache.Take("SELECT 1");
    EXPECT_NE(one.get(), other.get());
    EXPECT_EQ(cache.idle_count(), 0U);
  }
  EXPECT_EQ(cache.idle_count(), 1U);
  const auto* const kept = cache.Take("SELECT 1").get();
  EXPECT_EQ(cache.Take("SELECT 1").get(), kept);
  for (int i = 0; i < 200; ++i) static_cast<void>(cache.Take("SELECT " + std::to_string(i)));
  EXPECT_EQ(cache.idle_count(), StatementCache::kCapacity);
  for (const auto* const text :
       {"", "  ", "SELECT 1; DELETE FROM PhoneLine", "SELEC", "SELECT \"no field\""}) {
    EXPECT_EQ(ErrorNumberOf([&] { return cache.Take(text); }), base::kDatabaseError) << text;
  }
}

TEST_F(SqliteDatabaseTest, RecordsetGivesValuesInEveryForm) {
  const auto connection = Open(NewDatabase());
  const auto rows =
      Execute(*connection, "SELECT NULL AS A, 42 AS B, 1.5 AS C, ? AS D", {std::string_view("x\0y", 3)});
  const auto text = std::string("x\0y", 3);
  EXPECT_EQ(rows->FieldCount(), 4);
  EXPECT_EQ(rows->FieldName(1), "B");
  EXPECT_EQ(rows->FieldIndex("d"), 3);
  EXPECT_EQ(rows->Text(0), "");
  EXPECT_EQ(rows->Text(1), "42");
  EXPECT_EQ(rows->Integer(1), 42);
  EXPECT_EQ(rows->Text(3), text);
  EXPECT_EQ(rows->Field(0), ports::DatabaseValue(ports::Null{}));
  EXPECT_EQ(rows->Field(1), ports::DatabaseValue(std::int64_t{42}));
  EXPECT_EQ(rows->Field(2), ports::DatabaseValue(1.5));
  EXPECT_EQ(rows->Field(3), ports::DatabaseValue(text));
}

TEST_F(SqliteDatabaseTest, RecordsetKeepsItsContract) {
  const auto connection = Open(NewDatabase());
  for (const auto line : {"a", "b", "no", "c"}) AddLine(*connection, line);
  const auto rows = Execute(*connection, "SELECT Line FROM PhoneLine WHERE Line <> ? ORDER BY id", {"no"});
  rows->MoveNext();
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(rows->Text(0), "b");  // counting moves nothing
  EXPECT_EQ(rows->ActiveConnection(), connection.get());
  test_support::ExpectContract(*rows, 0, "Line");
  const auto deleted = Execute(*connection, "DELETE FROM PhoneLine WHERE Line = 'no'");
  EXPECT_EQ(deleted->RecordCount(), 0);
  EXPECT_EQ(ErrorNumberOf([&] { deleted->SetSort(""); }), base::kDatabaseError);
  // A statement that changes something and gives rows as well runs once.
  const auto inserted = Execute(*connection, "INSERT INTO PhoneLine (Line) VALUES ('d') RETURNING Line");
  EXPECT_EQ(ErrorNumberOf([&] { inserted->MoveTo(0); }), base::kDatabaseError);
  EXPECT_EQ(ErrorNumberOf([&] { inserted->SetSort(""); }), base::kDatabaseError);
  inserted->Close();
  EXPECT_EQ(Lines(*connection).size(), 4U);
  connection->Close();
  EXPECT_EQ(ErrorNumberOf([&] { connection->Close(); }), base::kDatabaseError);
  EXPECT_EQ(ErrorNumberOf([&] { Lines(*connection); }), base::kDatabaseError);
}

TEST_F(SqliteDatabaseTest, RefusesAnotherNumberOfParameters) {
  const auto connection = Open(NewDatabase());
  EXPECT_EQ(ErrorNumberOf([&] { Execute(*connection, "SELECT ?, ?", {"a"}); }), base::kDatabaseError);
  EXPECT_EQ(ErrorNumberOf([&] { Execute(*connection, "SELECT ?", {"a", "b"}); }), base::kDatabaseError);
  EXPECT_EQ(Column(*Execute(*connection, "SELECT ?", {"a"})), std::vector<std::string>{"a"});
}

TEST_F(SqliteDatabaseTest, SortsByAFieldInBothDirections) {
  const auto connection = Open(NewDatabase());
  for (const auto line : {"b", "Á", "c", "a"}) AddLine(*connection, line);
  const auto rows =
      Execute(*connection, "SELECT Line, id AS \"a \"\"key\"\"\" FROM PhoneLine WHERE Line <> ?", {"c"});
  using Texts = std::vector<std::string>;
  EXPECT_EQ(rows->Sort(), "");
  rows->SetSort("Line");
  EXPECT_EQ(Column(*rows), (Texts{"a", "Á", "b"}));
  rows->SetSort("Line DESC");
  EXPECT_EQ(rows->Sort(), "Line DESC");
  EXPECT_EQ(Column(*rows), (Texts{"b", "Á", "a"}));
  rows->SetSort("a \"key\" DESC");
  EXPECT_EQ(Column(*rows), (Texts{"a", "Á", "b"}));
  rows->SetSort("");
  EXPECT_EQ(Column(*rows).size(), 3U);
}

}  // namespace
}  // namespace kestro::adapters
