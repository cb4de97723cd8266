#pragma once

// The address book that the benchmarks run on, and SQLite's own tables that they are compared with.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "contacts/contact_statements.h"
#include "contacts/cti_contacts.h"
#include "unit/support/contacts_database.h"
#include "unit/support/sqlite_contacts.h"

namespace kestro::bench {

using contacts::Contact;

inline std::string Phone(int number) { return "+420" + std::to_string(600'000'000 + number * 7); }

inline Contact MakeContact(int number) {
  constexpr std::string_view kFirst[] = {"Jan", "Petr", "Eva", "Jiří", "Žofie", "Karel", "Tomáš", "Anna"};
  constexpr std::string_view kLast[] = {"Novák",  "Svoboda",   "Dvořák", "Říha",   "Kučera",
                                        "Veselý", "Procházka", "Němec",  "Pokorný"};
  constexpr std::string_view kCities[] = {"Praha", "Brno", "Ostrava", "Plzeň", "Liberec", "Zlín", "Olomouc"};
  const auto pick = [number](const auto& list, int step) {
    return std::string(list[static_cast<std::size_t>(number / step) % std::size(list)]);
  };
  Contact contact;
  contact.Name = pick(kLast, 3) + ' ' + pick(kFirst, 1) + ' ' + std::to_string(number * 37 % 9973);
  contact.Company = "Company " + std::to_string(number % 4001) + " s.r.o.";
  contact.Position = number % 3 == 0 ? "Technician" : "Owner";
  contact.Phone = {Phone(number).substr(4), "", "", ""};
  contact.SearchPhone = {Phone(number), "", "", ""};
  contact.PhoneType = {1, 2, 3, 4};
  contact.Street = "Dlouhá " + std::to_string(number % 211);
  contact.City = pick(kCities, 5);
  contact.ZIPCode = std::to_string(10'000 + number % 60'000);
  contact.Country = "Czech Republic";
  contact.Email = "contact" + std::to_string(number) + "@example.com";
  contact.Note =
      "Prefers to be called in the morning; contract " + std::to_string(number % 977) + " was renewed.";
  return contact;
}

/// In groups, as an import does: a transaction is kept in memory.
inline void Fill(test_support::ContactsDatabase& book, int count) {
  constexpr int kGroup = 20'000;
  contacts::DatabaseSession session(book.database(), book.connection_string());
  for (int first = 0; first < count; first += kGroup) {
    session.InTransaction([&] {
      for (int number = first; number < std::min(count, first + kGroup); ++number) {
        Contact contact = MakeContact(number);
        session.Run(contacts::GetContactStatements().insert, contacts::ContactValues(contact));
      }
    });
  }
}

inline std::unique_ptr<ports::Recordset> DisplayAll(test_support::ContactsDatabase& book) {
  contacts::CTIContacts component(book.database());
  component.SetConnectionString(book.connection_string());
  return component.SearchContacts({}, {}, {}, {});
}

/// Reads what a contact list shows of its current row.
inline void ReadRow(const ports::Recordset& rows) {
  for (int i = 0; i < rows.FieldCount(); ++i) benchmark::DoNotOptimize(rows.Text(i));
}

/// Reads what a contact list shows before anybody scrolls.
inline void ReadScreen(ports::Recordset& rows) {
  constexpr std::int64_t kScreenRows = 40;
  for (; !rows.AtEnd() && rows.Position() < kScreenRows; rows.MoveNext()) ReadRow(rows);
}

/// Every stored property but the key, in the order of the insertion.
inline void BindContact(sqlite3_stmt* statement, Contact& contact) {
  int position = 0;
  for (const auto& property : contacts::TextProperties()) {
    const std::string& text = property.of(contact);
    sqlite3_bind_text(statement, ++position, text.data(), static_cast<int>(text.size()), nullptr);
  }
  for (const auto type : contact.PhoneType) sqlite3_bind_int64(statement, ++position, type);
}

inline std::string ContactColumns() {
  std::string columns;
  for (const auto& property : contacts::TextProperties()) columns.append(property.name).append(", ");
  return columns + "PhoneType1, PhoneType2, PhoneType3, PhoneType4";
}

/// The same contacts in tables of SQLite's own, as an application without any layers would use them.
class BareAddressBook {
 public:
  explicit BareAddressBook(int count) {
    file_.Run(test_support::kSqliteContactTables);
    file_.Run("BEGIN");
    const auto insert = file_.Prepare(InsertStatement());
    for (int number = 0; number < count; ++number) {
      Contact contact = MakeContact(number);
      BindContact(insert.get(), contact);
      sqlite3_step(insert.get());
      file_.Check(sqlite3_reset(insert.get()));
    }
    file_.Run("COMMIT");
  }

  [[nodiscard]] test_support::SqliteFile& file() { return file_; }
  [[nodiscard]] std::filesystem::path path() const { return folder_.File("bare.sqlite"); }
  [[nodiscard]] adapters::StatementPointer Prepare(std::string_view text) { return file_.Prepare(text); }

  static std::string InsertStatement() {
    std::string marks = "?";
    for (std::size_t i = 1; i < contacts::TextProperties().size() + contacts::kPhoneCount; ++i)
      marks += ", ?";
    return "INSERT INTO Contact (" + ContactColumns() + ") VALUES (" + marks + ")";
  }
  static std::string SelectByPhone() {
    return "SELECT id_Contact, " + ContactColumns() +
           " FROM Contact WHERE SearchPhone1 = ?1 OR SearchPhone2 = ?1 OR SearchPhone3 = ?1 OR "
           "SearchPhone4 = ?1 ORDER BY id_Contact";
  }

 private:
  test_support::TemporaryFolder folder_;
  test_support::SqliteFile file_{folder_.File("bare.sqlite")};
};

inline std::string_view Column(sqlite3_stmt* row, int index) {
  const auto* const text =
      static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(row, index)));
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(row, index))};
}

inline Contact ReadBareContact(sqlite3_stmt* row) {
  Contact contact;
  int column = 0;
  contact.id_Contact = sqlite3_column_int64(row, column++);
  for (const auto& property : contacts::TextProperties()) property.of(contact) = Column(row, column++);
  for (auto& type : contact.PhoneType) type = sqlite3_column_int64(row, column++);
  return contact;
}

/// The contacts with that number, through the prepared selection.
inline std::vector<Contact> SelectByPhone(sqlite3_stmt* statement, const std::string& phone) {
  sqlite3_bind_text(statement, 1, phone.data(), static_cast<int>(phone.size()), nullptr);
  std::vector<Contact> found;
  while (sqlite3_step(statement) == SQLITE_ROW) found.push_back(ReadBareContact(statement));
  sqlite3_reset(statement);
  return found;
}

/// Numbers all over the table, the same ones in every run.
class PhoneSequence {
 public:
  explicit PhoneSequence(int count) : count_(count) {}
  std::string Next() {
    state_ = state_ * 1'103'515'245U + 12'345U;
    return Phone(static_cast<int>((state_ >> 8U) % static_cast<unsigned>(count_)));
  }

 private:
  int count_;
  unsigned state_ = 1;
};

}  // namespace kestro::bench
