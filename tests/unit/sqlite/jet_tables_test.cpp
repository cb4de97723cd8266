#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/new_database_file.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "base/runtime_error.h"
#include "jet/checker.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"
#include "unit/support/sqlite_contacts.h"

namespace kestro::adapters {
namespace {

using test_support::FaultyFiles;
using test_support::Files;
using test_support::RowText;
using test_support::TemporaryFolder;

/// What a statement did, in a form that two databases can be compared by.
struct Outcome {
  std::string error;  // the first byte of SQLite's code; empty: none
  std::vector<std::string> rows;
  int changes = 0;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  out << "error '" << outcome.error << "', changes " << outcome.changes << ", rows:";
  for (const auto& row : outcome.rows) out << "\n  " << row;
  return out;
}

/// Rows of a statement without ORDER BY are compared as a set.
Outcome RunOn(sqlite3* connection, const std::string& text) {
  Outcome outcome;
  sqlite3_stmt* prepared = nullptr;
  int result = sqlite3_prepare_v2(connection, text.c_str(), -1, &prepared, nullptr);
  const StatementPointer statement(prepared);
  const int before = sqlite3_total_changes(connection);
  while (result == SQLITE_OK || result == SQLITE_ROW) {
    result = sqlite3_step(prepared);
    if (result == SQLITE_ROW) outcome.rows.push_back(RowText(prepared));
  }
  if (result != SQLITE_DONE) outcome.error = std::to_string(result & 0xFF);
  outcome.changes = sqlite3_total_changes(connection) - before;
  if (text.find("ORDER BY") == std::string::npos) std::ranges::sort(outcome.rows);
  return outcome;
}

/// Statements over the tables t (with a key, an indexed number and texts) and u (without a key): each "$word"
/// is replaced by one of its texts.
const std::map<std::string_view, std::vector<std::string_view>> kGrammar = {
    {"statement",
     {"$insert",
      "$insert",
      "$insert",
      "$insert, $values",
      "INSERT INTO t (id, small) VALUES ($key, 1)",
      "INSERT INTO u SELECT text, number FROM t WHERE $condition",
      "INSERT INTO t (small, text) $some_of_u",
      "UPDATE t SET $assignment WHERE id = $key",
      "UPDATE t SET $assignment WHERE $condition",
      "UPDATE u SET value = value + 1 WHERE name $comparison $text",
      "DELETE FROM t WHERE $condition",
      "DELETE FROM u WHERE value $comparison $number",
      "BEGIN",
      "COMMIT",
      "$savepoint",
      "$savepoint",
      "SELECT COUNT(*), MIN(id), MAX(text), SUM(number), MIN(text) FROM t WHERE $condition",
      "SELECT t.id, u.name FROM u, t WHERE t.number = u.value AND $condition",
      "$select",
      "$select",
      "$select"}},
    {"some_of_u", {"SELECT $seldom_null, name FROM u ORDER BY name COLLATE BINARY, value LIMIT 5"}},
    {"insert", {"INSERT INTO t (number, small, text, memo, real) VALUES $values"}},
    {"select", {"SELECT * FROM t WHERE $condition $order"}},
    {"savepoint", {"ROLLBACK", "SAVEPOINT $name", "SAVEPOINT $name", "RELEASE $name", "ROLLBACK TO $name"}},
    {"name", {"a", "b", "c"}},
    {"key", {"1", "2", "3", "5", "8", "1$digit", "2$digit", "3$digit"}},
    {"digit", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}},
    {"small", {"-3", "-2", "-1", "10", "$digit", "$digit", "$digit"}},
    {"number", {"$small", "$small", "$small", "$small", "$odd"}},
    {"odd", {"NULL", "2.5", "-1e300", "1e300", "'7'", "'text'", "99999999999", "x'00'", "-99999999999"}},
    // What an INTEGER column of the file can hold.
    {"stored_number", {"NULL", "$small", "$small", "$small"}},
    {"seldom_null", {"1", "1", "1", "1", "1", "1", "1", "NULLIF(value, 3)"}},
    {"text", {"''", "'Novák'", "'novák'", "'Ňouma'", "'100%'", "'ж🤞x'", "char(0,65)", "'zz''z'", "'7'"}},
    {"part", {"$text", "$text", "'ŘŘ'", "'ÉÉÉ'"}},
    {"stored_text",
     {"NULL", "$text", "$text", "$text", "substr(replace(hex(zeroblob(3000)), '00', 'ř'), 1, $key)"}},
    {"memo",
     {"$stored_text", "$stored_text", "$stored_text", "$stored_text", "$stored_text", "$stored_text",
      "replace(hex(zeroblob(9000)), '0', 'é')"}},
    {"required", {"2", "2", "2", "2", "2", "2", "2", "2", "2", "2", "NULL"}},
    {"real", {"NULL", "0.25 * $stored_number", "0.25 * $stored_number"}},
    {"values", {"($stored_number, $required, $stored_text, $memo, $real)"}},
    {"comparison", {"=", "<", "<=", ">", ">=", "<>", "IS"}},
    {"simple",
     {"t.id $comparison $key", "t.rowid IN ($key, $key, $number)", "number BETWEEN $number AND $number",
      "number $comparison $number", "text $comparison $text", "ContainsText(memo, $part)"}},
    {"condition", {"($simple)", "($simple)", "(($simple) AND ($simple))", "(($simple) OR ($simple))"}},
    {"assignment",
     {"number = number + 1, text = $stored_text", "memo = COALESCE(memo, '') || $text", "small = 3",
      "small = 3", "small = NULLIF(number, 5)", "number = $stored_number",
      "text = memo, real = real / 2 WHERE length(memo) < 100 AND $condition OR 0 AND 1"}},
    {"order",
     {"ORDER BY id", "ORDER BY text, id", "ORDER BY text DESC, id", "ORDER BY memo COLLATE TextOrder, id",
      "ORDER BY number, id", "ORDER BY id DESC", "ORDER BY text COLLATE BINARY, id LIMIT 4", ""}}};

std::string Expanded(std::string_view text, std::mt19937& random) {
  std::string result;
  for (auto dollar = text.find('$'); dollar != std::string_view::npos; dollar = text.find('$')) {
    result += text.substr(0, dollar);
    text.remove_prefix(dollar + 1);
    const auto end = std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"), text.size());
    const auto& choices = kGrammar.at(text.substr(0, end));
    result += Expanded(choices[random() % choices.size()], random);
    text.remove_prefix(end);
  }
  return result.append(text);
}

class JetTablesTest : public testing::Test {
 protected:
  JetTablesTest() { CreateDatabaseFile(Files(), path_); }

  TemporaryFolder folder_;
  std::filesystem::path path_ = folder_.File("file.mdb");
  FaultyFiles files_{Files()};
};

constexpr const char* kJetTables =
    "BEGIN;"
    "CREATE VIRTUAL TABLE t USING jet(id AUTONUMBER PRIMARY KEY, number INTEGER, small INTEGER NOT NULL,"
    " text TEXT(80), memo MEMO, real DOUBLE, INDEX byNumber (number) IGNORE NULL);"
    "CREATE VIRTUAL TABLE u USING jet(name TEXT(80), value INTEGER);"
    "COMMIT";
constexpr const char* kSqliteTables =
    "CREATE TABLE t (id INTEGER PRIMARY KEY AUTOINCREMENT, number INTEGER, small INTEGER NOT NULL,"
    " text TEXT COLLATE TextOrder, memo TEXT COLLATE TextOrder, real REAL);"
    "CREATE TABLE u (name TEXT COLLATE TextOrder, value INTEGER)";

/// The same statements on the file and on SQLite's own tables. Now and then the file cannot be written: then
/// nothing of the transaction is left.
TEST_F(JetTablesTest, BehaveLikeSqlitesOwnTables) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const auto path = folder_.File(std::to_string(seed) + ".mdb");
    CreateDatabaseFile(Files(), path);
    auto handle = std::make_unique<SqliteHandle>(files_, path);
    handle->Run(kJetTables);
    const HandlePointer sqlite = OpenConnection();
    ASSERT_EQ(sqlite3_exec(sqlite.get(), kSqliteTables, nullptr, nullptr, nullptr), SQLITE_OK);
    const auto expect_equal_rows = [&] {
      for (const char* const all : {"SELECT * FROM t ORDER BY id", "SELECT * FROM u"}) {
        EXPECT_EQ(RunOn(handle->get(), all), RunOn(sqlite.get(), all));
      }
    };
    std::mt19937 random(seed);
    for (int i = 0; i < 400; ++i) {
      const std::string text = Expanded("$statement", random);
      SCOPED_TRACE(text);
      const bool fails = text == "COMMIT" && seed % 3 == 0 && sqlite3_get_autocommit(sqlite.get()) == 0 &&
                         sqlite3_total_changes(handle->get()) % 2 == 0;
      if (fails) files_.before_change = [] { throw jet::Error(jet::ErrorKind::kFileSystem, "disk full"); };
      const Outcome jet = RunOn(handle->get(), text);
      files_.before_change = [] {};
      if (fails && !jet.error.empty()) {
        EXPECT_EQ(jet.error, std::to_string(SQLITE_IOERR));
        EXPECT_STREQ(sqlite3_errmsg(handle->get()), "disk full");
        RunOn(sqlite.get(), "ROLLBACK");
      } else {
        ASSERT_EQ(jet, RunOn(sqlite.get(), text));
        ASSERT_EQ(sqlite3_get_autocommit(handle->get()), sqlite3_get_autocommit(sqlite.get()));
      }
      if (i % 10 == 9) expect_equal_rows();
    }
    RunOn(handle->get(), "COMMIT");
    RunOn(sqlite.get(), "COMMIT");
    handle.reset();  // before the file is opened anew
    handle = std::make_unique<SqliteHandle>(files_, path);
    expect_equal_rows();
    handle.reset();
    const auto database = jet::Database::Open(Files(), path.string(), jet::OpenMode::kReadOnly);
    ASSERT_EQ(jet::CheckDatabase(*database).findings, std::vector<std::string>{});
  }
}

TEST_F(JetTablesTest, GoBackToSavepointsOfBeforeTheirFirstChange) {
  SqliteHandle handle(files_, path_);
  handle.Run(kJetTables);
  handle.Run("INSERT INTO u VALUES ('kept', 1)");
  constexpr const char* kDelete = "DELETE FROM u";
  const std::vector<const char*> changes[] = {
      {kDelete, "ROLLBACK TO b"},
      {kDelete, "ROLLBACK TO a"},
      {kDelete, "SAVEPOINT c", "ROLLBACK TO b"},
      {kDelete, "RELEASE b", "ROLLBACK TO a"},
      {kDelete, "ROLLBACK TO b", kDelete, "RELEASE b", "SAVEPOINT b", "ROLLBACK TO a"},
  };
  for (const auto& statements : changes) {
    handle.Run("BEGIN; SAVEPOINT a; SAVEPOINT b");
    for (const char* const text : statements) handle.Run(text);
    handle.Run("COMMIT");
    EXPECT_EQ(RunOn(handle.get(), "SELECT name FROM u").rows, std::vector<std::string>{"3:kept|"})
        << statements.back();
  }
}

TEST_F(JetTablesTest, AFailedCommitFailsTheStatementAndLeavesNothing) {
  SqliteHandle handle(files_, path_);
  handle.Run(kJetTables);
  handle.Run("INSERT INTO u VALUES ('kept', 1)");
  // Whichever step of the commit fails, in a transaction or without one.
  for (int step = 0; step < 40; ++step) {
    for (const char* const text :
         {"INSERT INTO u VALUES ('lost', 2)",
          "BEGIN; INSERT INTO u VALUES ('lost', 2); UPDATE t SET number = 1; COMMIT"}) {
      int left = step;
      files_.before_change = [&left] {
        if (left-- == 0) throw jet::Error(jet::ErrorKind::kFileSystem, "disk full");
      };
      const bool failed = sqlite3_exec(handle.get(), text, nullptr, nullptr, nullptr) != SQLITE_OK;
      const std::string message = sqlite3_errmsg(handle.get());
      files_.before_change = [] {};
      if (!failed) continue;
      EXPECT_EQ(message, "disk full");
      EXPECT_NE(sqlite3_get_autocommit(handle.get()), 0);
      EXPECT_EQ(RunOn(handle.get(), "SELECT COUNT(*) FROM u WHERE value = 1").rows,
                std::vector<std::string>{"1:1|"});
      handle.Run("DELETE FROM u WHERE value = 2");
    }
  }
  handle.Run("INSERT INTO u VALUES ('kept', 1)");
}

TEST_F(JetTablesTest, ARowReadMeanwhileIsTheRowAsItIsNow) {
  SqliteHandle handle(files_, path_);
  handle.Run(kJetTables);
  handle.Run(
      "INSERT INTO t (small, text) VALUES (1, 'a'), (1, 'b'), (1, 'c'); INSERT INTO u VALUES ('x', 1)");
  for (const char* const order : {"", " ORDER BY t.id", " ORDER BY t.text, t.id"}) {
    // Each inner row changes the file before the outer row is read once more.
    const auto text = std::string("SELECT t.id, t.text FROM t") + order;
    const auto outer = handle.statements().Take(text);
    std::string seen;
    while (sqlite3_step(outer.get()) == SQLITE_ROW) {
      seen += RowText(outer.get());
      handle.Run("UPDATE t SET memo = COALESCE(memo, '') || 'long enough to move the row to another page'");
      if (seen.size() < 20) handle.Run("DELETE FROM t WHERE text = 'b'; ");
    }
    EXPECT_NE(seen.find("3:a|"), std::string::npos);
    EXPECT_NE(seen.find("3:c|"), std::string::npos);
    handle.Run("DELETE FROM t; INSERT INTO t (small, text) VALUES (1, 'a'), (1, 'b'), (1, 'c')");
  }
  handle.Run("INSERT INTO u SELECT a.text, b.number FROM t a, t b");
  EXPECT_EQ(RunOn(handle.get(), "SELECT COUNT(*), COUNT(name) FROM u").rows,
            std::vector<std::string>{"1:10|1:10|"});
}

TEST_F(JetTablesTest, ShowTypesAndRefuseWhatDoesNotFit) {
  SqliteHandle handle(files_, path_);
  handle.Run(
      "CREATE VIRTUAL TABLE types USING jet(\"a \"\"name\"\", x\" INTEGER, b BOOLEAN, c MONEY, d DATETIME,"
      " e TEXT(3), f OLE)");
  handle.Run("INSERT INTO types VALUES (-2147483648, 2, 1.25, 36526.5, 'ř🤞', x'00FF')");
  EXPECT_EQ(RunOn(handle.get(), "SELECT \"a \"\"name\"\", x\", b, c, d, e, hex(f) FROM types").rows,
            std::vector<std::string>{"1:-2147483648|1:1|2:1.25|2:36526.5|3:ř🤞|3:00FF|"});
  for (const char* const value :
       {"(2147483648, 0, 0, 0, '', NULL)", "(1.5, 0, 0, 0, '', NULL)", "('x', 0, 0, 0, '', NULL)",
        "(0, 0, 1e18, 0, '', NULL)", "(0, 0, 0, 'x', '', NULL)", "(0, 0, 0, 0, '🤞🤞', NULL)",
        "(0, 0, 0, 0, '', 'text')", "(0, 0, 0, 0, x'41', NULL)"}) {
    EXPECT_EQ(RunOn(handle.get(), std::string("INSERT INTO types VALUES ") + value).error,
              std::to_string(SQLITE_MISMATCH))
        << value;
  }
  for (const char* const design : {"a", "a INTEGERS", "a TEXT", "a TEXT(0)", "a TEXT(256)", "a INTEGER KEY",
                                   "a INTEGER, INDEX i", "a INTEGER, INDEX i (b)", "a MEMO, INDEX i (a)",
                                   "\"a INTEGER", "a INTEGER, a MEMO", "a AUTONUMBER, b AUTONUMBER"}) {
    EXPECT_THROW(handle.Run((std::string("CREATE VIRTUAL TABLE x USING jet(") + design + ")").c_str()),
                 base::RuntimeError)
        << design;
  }
  EXPECT_THROW(handle.Run("DROP TABLE types"), base::RuntimeError);
  EXPECT_THROW(handle.Run("CREATE VIRTUAL TABLE missing USING jet"), base::RuntimeError);
}

/// What other programs have made and this one must not touch is there all the same.
TEST_F(JetTablesTest, ATableThatMayOnlyBeReadSaysWhy) {
  // The engine makes it for once: a column of this name marks a table that takes part in a replication.
  SqliteHandle(files_, path_).Run("CREATE VIRTUAL TABLE foreign_one USING jet(a INTEGER, s_Lineage INTEGER)");
  SqliteHandle handle(files_, path_);
  EXPECT_EQ(RunOn(handle.get(), "SELECT COUNT(*) FROM foreign_one").rows, std::vector<std::string>{"1:0|"});
  EXPECT_EQ(RunOn(handle.get(), "INSERT INTO foreign_one VALUES (1, 2)").error,
            std::to_string(SQLITE_READONLY));
  EXPECT_NE(std::string_view(sqlite3_errmsg(handle.get())).find("replication"), std::string_view::npos);
  EXPECT_NE(sqlite3_get_autocommit(handle.get()), 0);
}

}  // namespace
}  // namespace kestro::adapters
