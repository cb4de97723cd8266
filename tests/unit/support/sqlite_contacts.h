#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sqlite3.h>

#include "adapters/sqlite/sqlite_handle.h"

namespace kestro::test_support {

/// A connection to a database file of SQLite's own, which is made when it is missing.
class SqliteFile {
 public:
  explicit SqliteFile(const std::filesystem::path& path) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(path.c_str(), &opened);
    connection_.reset(opened);
    Check(result);
  }
  void Run(const std::string& statements) {
    Check(sqlite3_exec(get(), statements.c_str(), nullptr, nullptr, nullptr));
  }
  [[nodiscard]] adapters::StatementPointer Prepare(std::string_view text) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(get(), text.data(), static_cast<int>(text.size()), &statement, nullptr));
    return adapters::StatementPointer(statement);
  }
  void Check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(get()));
  }
  [[nodiscard]] sqlite3* get() const { return connection_.get(); }

 private:
  adapters::HandlePointer connection_;
};

/// Types and values of a row; a long text is told by its hash.
inline std::string RowText(sqlite3_stmt* row) {
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

/// The tables in which earlier versions kept the contacts, without the index by name, whose order SQLite
/// alone does not know.
inline constexpr const char* kSqliteContactTables = R"(
CREATE TABLE Contact (
  id_Contact INTEGER PRIMARY KEY AUTOINCREMENT,
  Name TEXT NOT NULL DEFAULT '', Company TEXT NOT NULL DEFAULT '', Position TEXT NOT NULL DEFAULT '',
  Phone1 TEXT NOT NULL DEFAULT '', Phone2 TEXT NOT NULL DEFAULT '', Phone3 TEXT NOT NULL DEFAULT '',
  Phone4 TEXT NOT NULL DEFAULT '', SearchPhone1 TEXT NOT NULL DEFAULT '',
  SearchPhone2 TEXT NOT NULL DEFAULT '', SearchPhone3 TEXT NOT NULL DEFAULT '',
  SearchPhone4 TEXT NOT NULL DEFAULT '', PhoneType1 INTEGER NOT NULL DEFAULT 0,
  PhoneType2 INTEGER NOT NULL DEFAULT 0, PhoneType3 INTEGER NOT NULL DEFAULT 0,
  PhoneType4 INTEGER NOT NULL DEFAULT 0, Street TEXT NOT NULL DEFAULT '', City TEXT NOT NULL DEFAULT '',
  ZIPCode TEXT NOT NULL DEFAULT '', Country TEXT NOT NULL DEFAULT '', Email TEXT NOT NULL DEFAULT '',
  PicturePath TEXT NOT NULL DEFAULT '', Note TEXT NOT NULL DEFAULT '', UserField1 TEXT NOT NULL DEFAULT '',
  UserField2 TEXT NOT NULL DEFAULT '', UserField3 TEXT NOT NULL DEFAULT '',
  UserField4 TEXT NOT NULL DEFAULT '');
CREATE INDEX ContactBySearchPhone1 ON Contact (SearchPhone1);
CREATE INDEX ContactBySearchPhone2 ON Contact (SearchPhone2);
CREATE INDEX ContactBySearchPhone3 ON Contact (SearchPhone3);
CREATE INDEX ContactBySearchPhone4 ON Contact (SearchPhone4);
CREATE TABLE PhoneType (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, "Order" INTEGER NOT NULL);
CREATE TABLE UserFields (Field1 TEXT, Field2 TEXT, Field3 TEXT, Field4 TEXT);
CREATE TABLE PhoneLine (id INTEGER PRIMARY KEY AUTOINCREMENT, Line TEXT NOT NULL, Name TEXT);
CREATE TABLE Position (Position TEXT NOT NULL PRIMARY KEY);
CREATE TABLE Country (Country TEXT NOT NULL PRIMARY KEY);
)";

}  // namespace kestro::test_support
