#include "contacts/schema.h"

#include "contacts/contact.h"
#include "contacts/database_session.h"
#include "contacts/initial_entries.h"

namespace kestro::contacts {
namespace {

/// TEXT(n) takes n UTF-16 units: twice the characters of the widths, because a character can take two. Where
/// that is more than the 255 a TEXT can have, and where there is no width, the column is a MEMO. A phone type
/// may have been deleted or come from another database: a contact with an unknown type is still a good one.
constexpr std::string_view kTables[] = {
    R"(CREATE VIRTUAL TABLE Contact USING jet(
  id_Contact AUTONUMBER PRIMARY KEY,
  Name MEMO,
  Company MEMO,
  Position MEMO,
  Phone1 TEXT(100),
  Phone2 TEXT(100),
  Phone3 TEXT(100),
  Phone4 TEXT(100),
  SearchPhone1 TEXT(100),
  SearchPhone2 TEXT(100),
  SearchPhone3 TEXT(100),
  SearchPhone4 TEXT(100),
  SearchHash1 INTEGER,
  SearchHash2 INTEGER,
  SearchHash3 INTEGER,
  SearchHash4 INTEGER,
  PhoneType1 INTEGER,
  PhoneType2 INTEGER,
  PhoneType3 INTEGER,
  PhoneType4 INTEGER,
  Street TEXT(200),
  City TEXT(200),
  ZIPCode TEXT(40),
  Country TEXT(200),
  Email MEMO,
  PicturePath MEMO,
  Note MEMO,
  UserField1 TEXT(60),
  UserField2 TEXT(60),
  UserField3 TEXT(60),
  UserField4 MEMO,
  INDEX ContactBySearchHash1 (SearchHash1) IGNORE NULL,
  INDEX ContactBySearchHash2 (SearchHash2) IGNORE NULL,
  INDEX ContactBySearchHash3 (SearchHash3) IGNORE NULL,
  INDEX ContactBySearchHash4 (SearchHash4) IGNORE NULL))",
    R"(CREATE VIRTUAL TABLE PhoneType USING jet(
  id AUTONUMBER PRIMARY KEY,
  name TEXT(40) NOT NULL,
  "Order" INTEGER NOT NULL))",
    R"(CREATE VIRTUAL TABLE UserFields USING jet(
  id AUTONUMBER PRIMARY KEY,
  Field1 MEMO,
  Field2 MEMO,
  Field3 MEMO,
  Field4 MEMO))",
    "CREATE VIRTUAL TABLE PhoneLine USING jet(id AUTONUMBER PRIMARY KEY, Line MEMO NOT NULL, Name MEMO)",
    "CREATE VIRTUAL TABLE Position USING jet(id AUTONUMBER PRIMARY KEY, Position TEXT(255) NOT NULL)",
    "CREATE VIRTUAL TABLE Country USING jet(id AUTONUMBER PRIMARY KEY, Country TEXT(255) NOT NULL)",
};

void FillLists(DatabaseSession& session) {
  std::int64_t order = 0;
  for (const auto name : InitialPhoneTypes()) {
    session.Run(R"(INSERT INTO PhoneType (name, "Order") VALUES (?, ?))", {name, ++order});
  }
  for (const auto name : InitialPositions())
    session.Run("INSERT INTO Position (Position) VALUES (?)", {name});
  for (const auto name : InitialCountries()) session.Run("INSERT INTO Country (Country) VALUES (?)", {name});
}

}  // namespace

std::span<const std::string_view> TableStatements() { return kTables; }

void CreateSchema(ports::Database& database, std::string_view connection_string) {
  DatabaseSession session(database, connection_string);
  session.InTransaction([&] {
    for (const auto statement : TableStatements()) session.Run(statement);
    FillLists(session);
  });
}

}  // namespace kestro::contacts
