#include <algorithm>
#include <cstdint>
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

namespace kestro::adapters {
namespace {

using test_support::FaultyFiles;
using test_support::Files;
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

std::string RowText(sqlite3_stmt* row) {
  std::string text;
  for (int i = 0; i < sqlite3_column_count(row); ++i) {
    text += std::to_string(sqlite3_column_type(row, i)) + ":";
    const auto* const value = static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(row, i)));
    const std::string_view whole(value == nullptr ? "" : value,
                                 static_cast<std::size_t>(sqlite3_column_bytes(row, i)));
    constexpr std::size_t kShort = 50;
    text += whole.size() < kShort ? std::string(whole) : std::to_string(std::hash<std::string_view>{}(whole));
    text += "|";
  }
  return text;
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

/// Statements over the tables t (with a key, an indexed number and texts) and u (without a key).
class Statements {
 public:
  explicit Statements(unsigned seed) : random_(seed) {}

  std::string Next() {
    switch (Below(20)) {
      case 0:
      case 1:
      case 2:
        return "INSERT INTO t (number, small, text, memo, real) VALUES " + Values();
      case 3:
        return "INSERT INTO t (number, small, text, memo, real) VALUES " + Values() + ", " + Values();
      case 4:
        return "INSERT INTO t (id, small) VALUES (" + Key() + ", 1)";
      case 5:
        return "INSERT INTO u SELECT text, number FROM t WHERE " + Condition();
      case 6:
        return "INSERT INTO t (small, text) SELECT " + std::string(Below(8) == 0 ? "NULLIF(value, 3)" : "1") +
               ", name FROM u ORDER BY name COLLATE BINARY, value LIMIT 5";
      case 7:
        return "UPDATE t SET " + Assignment() + " WHERE id = " + Key();
      case 8:
        return "UPDATE t SET " + Assignment() + " WHERE " + Condition();
      case 9:
        return "UPDATE u SET value = value + 1 WHERE name " + Comparison() + Text();
      case 10:
        return "DELETE FROM t WHERE " + Condition();
      case 11:
        return "DELETE FROM u WHERE value " + Comparison() + Number();
      case 12:
        return Below(2) == 0 ? "BEGIN" : "COMMIT";
      case 13:
        return Below(3) == 0 ? "ROLLBACK" : "SAVEPOINT " + Savepoint();
      case 14:
        return std::string(Below(2) == 0 ? "RELEASE " : "ROLLBACK TO ") + Savepoint();
      case 15:
        return "SELECT COUNT(*), MIN(id), MAX(text), SUM(number), MIN(text) FROM t WHERE " + Condition();
      case 16:
        return "SELECT t.id, u.name FROM u, t WHERE t.number = u.value AND " + Condition();
      default:
        return "SELECT * FROM t WHERE " + Condition() + Order();
    }
  }

 private:
  unsigned Below(unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit - 1)(random_); }
  std::string Key() { return std::to_string(1 + Below(40)); }
  std::string Number() {
    constexpr const char* kOdd[] = {"NULL",   "2.5",         "-1e300", "1e300",       "'7'",
                                    "'text'", "99999999999", "x'00'",  "-99999999999"};
    return Below(5) == 0 ? kOdd[Below(std::size(kOdd))] : std::to_string(static_cast<int>(Below(14)) - 3);
  }
  /// What an INTEGER column of the file can hold.
  std::string StoredNumber() {
    return Below(4) == 0 ? "NULL" : std::to_string(static_cast<int>(Below(14)) - 3);
  }
  std::string Text() {
    constexpr const char* kTexts[] = {"''",        "'Novák'",    "'novák'", "'Ňouma'", "'100%'",
                                      "'ж🤞x'", "char(0,65)", "'zz''z'", "'7'"};
    return kTexts[Below(std::size(kTexts))];
  }
  std::string StoredText() {
    if (Below(5) == 0) return "NULL";
    return Below(9) == 0 ? "substr(replace(hex(zeroblob(3000)), '00', 'ř'), 1, " + Key() + ")" : Text();
  }
  std::string Values() {
    return "(" + StoredNumber() + ", " + (Below(12) == 0 ? "NULL" : "2") + ", " + StoredText() + ", " +
           (Below(9) == 0 ? "replace(hex(zeroblob(9000)), '0', 'é')" : StoredText()) + ", " +
           (Below(3) == 0 ? "NULL" : "0.25 * " + StoredNumber()) + ")";
  }
  std::string Comparison() {
    constexpr const char* kComparisons[] = {" = ", " < ", " <= ", " > ", " >= ", " <> ", " IS "};
    return kComparisons[Below(std::size(kComparisons))];
  }
  std::string Simple() {
    switch (Below(6)) {
      case 0:
        return "t.id" + Comparison() + Key();
      case 1:
        return "t.rowid IN (" + Key() + ", " + Key() + ", " + Number() + ")";
      case 2:
        return "number BETWEEN " + Number() + " AND " + Number();
      case 3:
        return "number" + Comparison() + Number();
      case 4:
        return "text" + Comparison() + Text();
      default:
        return "ContainsText(memo, " + Text() + ")";
    }
  }
  std::string Condition() {
    const std::string first = "(" + Simple() + ")";
    if (Below(2) == 0) return first;
    return "(" + first + (Below(2) == 0 ? " AND " : " OR ") + "(" + Simple() + "))";
  }
  std::string Assignment() {
    switch (Below(5)) {
      case 0:
        return "number = number + 1, text = " + StoredText();
      case 1:
        return "memo = COALESCE(memo, '') || " + Text();
      case 2:
        return "small = " + std::string(Below(4) == 0 ? "NULLIF(number, 5)" : "3");
      case 3:
        return "number = " + StoredNumber();
      default:
        return "text = memo, real = real / 2 WHERE length(memo) < 100 AND " + Condition() + " OR 0 AND 1";
    }
  }
  std::string Order() {
    constexpr const char* kOrders[] = {" ORDER BY id",
                                       " ORDER BY text, id",
                                       " ORDER BY text DESC, id",
                                       " ORDER BY memo COLLATE TextOrder, id",
                                       " ORDER BY number, id",
                                       " ORDER BY id DESC",
                                       " ORDER BY text COLLATE BINARY, id LIMIT 4",
                                       ""};
    return kOrders[Below(std::size(kOrders))];
  }
  std::string Savepoint() { return std::string(1, static_cast<char>('a' + Below(3))); }

  std::mt19937 random_;
};

class JetTablesTest : public testing::Test {
 protected:
  JetTablesTest() { CreateDatabaseFile(Files(), path_); }

  void ExpectSound() {
    const auto database = jet::Database::Open(Files(), path_.string(), jet::OpenMode::kReadOnly);
    EXPECT_EQ(jet::CheckDatabase(*database).findings, std::vector<std::string>{});
  }

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
    Statements statements(seed);
    for (int i = 0; i < 400; ++i) {
      const std::string text = statements.Next();
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
      if (i % 10 == 9) {
        for (const char* const all : {"SELECT * FROM t ORDER BY id", "SELECT * FROM u"}) {
          ASSERT_EQ(RunOn(handle->get(), all), RunOn(sqlite.get(), all));
        }
      }
    }
    RunOn(handle->get(), "COMMIT");
    RunOn(sqlite.get(), "COMMIT");
    handle.reset();  // before the file is opened anew
    handle = std::make_unique<SqliteHandle>(files_, path);
    for (const char* const all : {"SELECT * FROM t ORDER BY id", "SELECT * FROM u"}) {
      ASSERT_EQ(RunOn(handle->get(), all), RunOn(sqlite.get(), all));
    }
    handle.reset();
    const auto database = jet::Database::Open(Files(), path.string(), jet::OpenMode::kReadOnly);
    ASSERT_EQ(jet::CheckDatabase(*database).findings, std::vector<std::string>{});
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
