#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "ports/database.h"
#include "scenario/script.h"

namespace kestro::scenario {

/// The rows of the contacts database that a script asks for. Raises ScriptError.
class AddressBook {
 public:
  /// Takes phone-type, phone-line, custom-fields and contact; false for any other action.
  bool Add(const Action& action);
  [[nodiscard]] bool empty() const;
  /// Line of the first action taken.
  [[nodiscard]] int first_line() const { return first_line_; }

  /// Writes the rows, contacts in the form in which the editor stores them.
  /// base::RuntimeError when the database refuses them.
  void Store(ports::Database& database, std::string_view connection_string) const;

 private:
  struct Entry {
    contacts::Contact contact;
    std::map<int, std::string> phone_types;  // phone (from 0) -> key or name of its type
    int line = 0;
  };

  void AddContact(const Action& action);
  static void SetProperty(Entry& entry, const std::string& key, const std::string& value);

  std::vector<contacts::PhoneType> phone_types_;
  std::vector<contacts::PhoneLine> phone_lines_;
  std::optional<contacts::UserFieldNames> field_names_;
  std::vector<Entry> contacts_;
  int first_line_ = 0;
};

/// Writes the rows of an address-book script (those four actions and nothing
/// else) into the database. Raises ScriptError or base::RuntimeError.
void LoadAddressBook(std::string_view script, ports::Database& database, std::string_view connection_string);

}  // namespace kestro::scenario
