#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "contacts/phone_line_service.h"
#include "contacts/phone_type_service.h"
#include "contacts/pick_list_service.h"
#include "contacts/user_field_service.h"
#include "ports/database.h"

namespace kestro::contacts {

/// The contacts component: an object is made for one operation, given the
/// connection string, asked once and released. It and the services below hold
/// all SQL of the system. Every operation raises base::RuntimeError on failure.
class CTIContacts {
 public:
  explicit CTIContacts(ports::Database& database) : database_(database) {}
  void SetConnectionString(std::string_view text) { connection_string_ = text; }

  /// Contact with that key, or none.
  [[nodiscard]] std::optional<Contact> GetContact(std::int64_t id_contact);
  /// A key that does not exist is no error: the contact is gone either way.
  void DeleteContact(std::int64_t id_contact);
  /// Stores every property, texts cut to their widths. Raises when the contact does not exist any more.
  void UpdateContact(const Contact& contact);
  /// Stores a new contact, texts cut to their widths, and returns its key (id_Contact is not looked at).
  std::int64_t CreateContact(const Contact& contact);
  /// Cuts the contacts' texts to their widths and stores them as new ones, all of them or, when it raises,
  /// none.
  void CreateContacts(std::span<Contact> contacts);
  /// Contacts whose fields contain the given texts (letter case ignored, no
  /// wildcards), ordered by name. An empty text sets no condition. Columns:
  /// id_Contact, Name, Company, City, Phone1. A result of any length can be
  /// scrolled at once and holds no connection (KeysetRecordset); it may outlive
  /// this object, not the database.
  [[nodiscard]] std::unique_ptr<ports::Recordset> SearchContacts(std::string_view name,
                                                                 std::string_view company,
                                                                 std::string_view city,
                                                                 std::string_view note);
  /// All contacts with one of the four search forms equal to `search_phone`, by key;
  /// an empty text finds none.
  [[nodiscard]] std::vector<Contact> FindContactsByPhone(std::string_view search_phone);

 private:
  ports::Database& database_;
  std::string connection_string_;
};

}  // namespace kestro::contacts
