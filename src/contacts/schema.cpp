#include "contacts/schema.h"

#include "contacts/contact.h"
#include "contacts/database_session.h"
#include "contacts/initial_entries.h"

namespace kestro::contacts {
namespace {

/// Texts of a contact are never null. A phone type may have been deleted or come from another database: it
/// is no foreign key, a contact with an unknown type is still a good contact.
constexpr std::string_view kTables[] = {
    R"(CREATE TABLE Contact (
  id_Contact INTEGER PRIMARY KEY AUTOINCREMENT,
  Name TEXT NOT NULL DEFAULT '',
  Company TEXT NOT NULL DEFAULT '',
  Position TEXT NOT NULL DEFAULT '',
  Phone1 TEXT NOT NULL DEFAULT '',
  Phone2 TEXT NOT NULL DEFAULT '',
  Phone3 TEXT NOT NULL DEFAULT '',
  Phone4 TEXT NOT NULL DEFAULT '',
  SearchPhone1 TEXT NOT NULL DEFAULT '',
  SearchPhone2 TEXT NOT NULL DEFAULT '',
  SearchPhone3 TEXT NOT NULL DEFAULT '',
  SearchPhone4 TEXT NOT NULL DEFAULT '',
  PhoneType1 INTEGER NOT NULL DEFAULT 0,
  PhoneType2 INTEGER NOT NULL DEFAULT 0,
  PhoneType3 INTEGER NOT NULL DEFAULT 0,
  PhoneType4 INTEGER NOT NULL DEFAULT 0,
  Street TEXT NOT NULL DEFAULT '',
  City TEXT NOT NULL DEFAULT '',
  ZIPCode TEXT NOT NULL DEFAULT '',
  Country TEXT NOT NULL DEFAULT '',
  Email TEXT NOT NULL DEFAULT '',
  PicturePath TEXT NOT NULL DEFAULT '',
  Note TEXT NOT NULL DEFAULT '',
  UserField1 TEXT NOT NULL DEFAULT '',
  UserField2 TEXT NOT NULL DEFAULT '',
  UserField3 TEXT NOT NULL DEFAULT '',
  UserField4 TEXT NOT NULL DEFAULT ''))",
    "CREATE INDEX ContactBySearchPhone1 ON Contact (SearchPhone1)",
    "CREATE INDEX ContactBySearchPhone2 ON Contact (SearchPhone2)",
    "CREATE INDEX ContactBySearchPhone3 ON Contact (SearchPhone3)",
    "CREATE INDEX ContactBySearchPhone4 ON Contact (SearchPhone4)",
    // The whole list comes in this order, at once. Without it a million names are sorted each time.
    "CREATE INDEX ContactByName ON Contact (Name COLLATE TextOrder)",
    R"(CREATE TABLE PhoneType (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  name TEXT NOT NULL,
  "Order" INTEGER NOT NULL))",
    "CREATE TABLE UserFields (Field1 TEXT, Field2 TEXT, Field3 TEXT, Field4 TEXT)",
    "CREATE TABLE PhoneLine (id INTEGER PRIMARY KEY AUTOINCREMENT, Line TEXT NOT NULL, Name TEXT)",
    "CREATE TABLE Position (Position TEXT NOT NULL PRIMARY KEY)",
    "CREATE TABLE Country (Country TEXT NOT NULL PRIMARY KEY)",
};

void FillLists(DatabaseSession& session) {
  std::int64_t order = 0;
  for (const auto name : InitialPhoneTypes()) {
    session.Run(R"(INSERT INTO PhoneType (name, "Order") VALUES (?, ?))", {name, ++order});
  }
  for (const auto name : InitialPositions()) session.Run("INSERT INTO Position VALUES (?)", {name});
  for (const auto name : InitialCountries()) session.Run("INSERT INTO Country VALUES (?)", {name});
}

}  // namespace

void CreateSchema(ports::Database& database, std::string_view connection_string) {
  DatabaseSession session(database, connection_string);
  session.InTransaction([&] {
    for (const auto table : kTables) session.Run(table);
    FillLists(session);
  });
}

}  // namespace kestro::contacts
