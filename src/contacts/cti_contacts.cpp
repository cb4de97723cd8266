#include "contacts/cti_contacts.h"

#include "base/runtime_error.h"
#include "contacts/contact_statements.h"
#include "contacts/database_session.h"
#include "contacts/keyset_recordset.h"
#include "contacts/search_hash.h"

namespace kestro::contacts {

std::optional<Contact> CTIContacts::GetContact(std::int64_t id_contact) {
  DatabaseSession session(database_, connection_string_);
  const auto rows = session.Query(GetContactStatements().select_by_key, {id_contact});
  if (rows->AtEnd()) return std::nullopt;
  return ReadContact(*rows);
}

void CTIContacts::DeleteContact(std::int64_t id_contact) {
  DatabaseSession session(database_, connection_string_);
  session.Run("DELETE FROM Contact WHERE id_Contact = ?", {id_contact});
}

void CTIContacts::UpdateContact(const Contact& contact) {
  DatabaseSession session(database_, connection_string_);
  session.RequireRow("SELECT id_Contact FROM Contact WHERE id_Contact = ?", contact.id_Contact);
  Contact stored = contact;
  CutToWidths(stored);
  auto values = ContactValues(stored);
  values.emplace_back(stored.id_Contact);
  session.Run(GetContactStatements().update, values);
}

std::int64_t CTIContacts::CreateContact(const Contact& contact) {
  DatabaseSession session(database_, connection_string_);
  Contact stored = contact;
  CutToWidths(stored);
  return session.Insert(GetContactStatements().insert, ContactValues(stored));
}

void CTIContacts::CreateContacts(std::span<Contact> contacts) {
  DatabaseSession session(database_, connection_string_);
  session.InTransaction([&] {
    const auto insertion = session.Prepare(GetContactStatements().insert);
    for (Contact& contact : contacts) {
      CutToWidths(contact);
      DatabaseSession::Run(*insertion, ContactValues(contact));
    }
  });
}

std::unique_ptr<ports::Recordset> CTIContacts::SearchContacts(std::string_view name, std::string_view company,
                                                              std::string_view city, std::string_view note) {
  return std::make_unique<KeysetRecordset>(database_, connection_string_,
                                           MakeContactSearch(name, company, city, note));
}

std::vector<Contact> CTIContacts::FindContactsByPhone(std::string_view search_phone) {
  std::vector<Contact> found;
  // A contact's unused numbers are empty, too.
  if (search_phone.empty()) return found;
  DatabaseSession session(database_, connection_string_);
  const auto rows = session.Query(GetContactStatements().select_by_phone,
                                  {std::int64_t{SearchHash(search_phone)}, search_phone});
  for (; !rows->AtEnd(); rows->MoveNext()) found.push_back(ReadContact(*rows));
  return found;
}

}  // namespace kestro::contacts
