#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "contacts/database_session.h"
#include "contacts/keyset_query.h"
#include "ports/database.h"

namespace kestro::contacts {

/// The statements over the table Contact. Every text is the same each time it is asked for, so that the
/// database prepares it once.
struct ContactStatements {
  std::string select_by_key;    // the key
  std::string select_by_phone;  // SearchHash of the search form, the search form
  std::string insert;           // ContactValues
  std::string update;           // ContactValues, then the key
};

[[nodiscard]] const ContactStatements& GetContactStatements();

/// The contacts whose fields contain the parts, with the columns of the contact list, by name. An empty part
/// sets no condition.
[[nodiscard]] KeysetQuery MakeContactSearch(std::string_view name, std::string_view company,
                                            std::string_view city, std::string_view note);

/// Every property but the key, then what is stored beside them, in the order of the insertion's columns;
/// views the contact.
[[nodiscard]] std::vector<DatabaseSession::Value> ContactValues(Contact& contact);

/// The current row of one of the two selections.
[[nodiscard]] Contact ReadContact(const ports::Recordset& row);

/// Cuts every text to its width.
void CutToWidths(Contact& contact);

}  // namespace kestro::contacts
