#pragma once

// The address book that the benchmarks run on, and the bare engine they are compared with.

#include <cstdint>
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

inline void Fill(test_support::ContactsDatabase& book, int count) {
  contacts::DatabaseSession session(book.database(), book.connection_string());
  session.InTransaction([&] {
    for (int number = 0; number < count; ++number) {
      Contact contact = MakeContact(number);
      session.Run(contacts::GetContactStatements().insert, contacts::ContactValues(contact));
    }
  });
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

/// A connection and statements of the engine itself, as an application without any layers would use them.
class BareConnection {
 public:
  explicit BareConnection(const std::string& path) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    database_.reset(opened);
    Check(result);
  }

  adapters::StatementPointer Prepare(std::string_view text) {
    sqlite3_stmt* statement = nullptr;
    Check(
        sqlite3_prepare_v2(database_.get(), text.data(), static_cast<int>(text.size()), &statement, nullptr));
    return adapters::StatementPointer(statement);
  }

  void Check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_.get()));
  }

  void BindText(sqlite3_stmt* statement, int position, std::string_view text) {
    Check(sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), nullptr));
  }

 private:
  adapters::HandlePointer database_;
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
inline std::vector<Contact> SelectByPhone(BareConnection& bare, sqlite3_stmt* statement,
                                          const std::string& phone) {
  for (int i = 1; i <= contacts::kPhoneCount; ++i) bare.BindText(statement, i, phone);
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
