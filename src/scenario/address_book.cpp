#include "scenario/address_book.h"

#include <algorithm>

#include "base/text.h"
#include "contacts/caller_id.h"
#include "contacts/cti_contacts.h"
#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

using contacts::Contact;
using contacts::kPhoneCount;

constexpr std::string_view kPhoneTypeKey = "PhoneType";
constexpr std::string_view kSearchPhoneKey = "SearchPhone";

template <class Service>
Service Connected(ports::Database& database, std::string_view connection_string) {
  Service service(database);
  service.SetConnectionString(connection_string);
  return service;
}

/// Number of the phone that "PhoneType3" is about, from 0; nothing for another key.
std::optional<int> PhoneOfTypeKey(std::string_view key) {
  if (!key.starts_with(kPhoneTypeKey)) return std::nullopt;
  const auto number = base::ParseInt32(key.substr(kPhoneTypeKey.size()));
  if (!number || *number < 1 || *number > kPhoneCount) return std::nullopt;
  return *number - 1;
}

std::string Cut(std::string_view text, std::optional<int> width) {
  if (!width) return std::string(text);
  return std::string(base::FirstCharacters(text, static_cast<std::size_t>(*width)));
}

/// What the editor does to the texts when it stores a contact.
void PrepareAsEditor(Contact& contact) {
  for (const contacts::TextProperty& property : contacts::TextProperties()) {
    property.of(contact) = Cut(property.of(contact), property.width);
  }
  for (std::size_t phone = 0; phone < contact.Phone.size(); ++phone) {
    contact.SearchPhone[phone] =
        Cut(contacts::InternationalCallerIdFromText(contact.Phone[phone]), contacts::DatabaseLength::kPhone);
  }
}

std::int64_t TypeKey(const std::string& written, const std::vector<contacts::PhoneType>& types, int line) {
  if (const auto key = base::ParseInt32(written)) return *key;
  const auto type = std::find_if(types.begin(), types.end(),
                                 [&](const auto& candidate) { return candidate.name == written; });
  if (type == types.end()) throw ScriptError(line, "unknown phone type " + Quoted(written));
  return type->id;
}

}  // namespace

bool AddressBook::Add(const Action& action) {
  switch (action.kind) {
    case ActionKind::kPhoneType:
      phone_types_.push_back({0, action.Text(0), action.Number(1)});
      break;
    case ActionKind::kPhoneLine:
      phone_lines_.push_back({0, action.Text(0), action.Text(1)});
      break;
    case ActionKind::kCustomFields:
      field_names_ = {action.Text(0), action.Text(1), action.Text(2), action.Text(3)};
      break;
    case ActionKind::kContact:
      AddContact(action);
      break;
    default:
      return false;
  }
  if (first_line_ == 0) first_line_ = action.line;
  return true;
}

bool AddressBook::empty() const { return first_line_ == 0; }

void AddressBook::AddContact(const Action& action) {
  Entry entry;
  entry.line = action.line;
  for (const auto& [key, value] : action.options) SetProperty(entry, key, value.text);
  PrepareAsEditor(entry.contact);
  contacts_.push_back(std::move(entry));
}

void AddressBook::SetProperty(Entry& entry, const std::string& key, const std::string& value) {
  if (const auto phone = PhoneOfTypeKey(key)) {
    entry.phone_types[*phone] = value;
    return;
  }
  const auto properties = contacts::TextProperties();
  const auto property = std::find_if(properties.begin(), properties.end(),
                                     [&](const auto& candidate) { return candidate.name == key; });
  if (property == properties.end()) throw ScriptError(entry.line, "a contact has no property " + Quoted(key));
  if (key.starts_with(kSearchPhoneKey)) throw ScriptError(entry.line, key + " follows from the phone number");
  property->of(entry.contact) = value;
}

void AddressBook::Store(ports::Database& database, std::string_view connection_string) const {
  auto type_service = Connected<contacts::PhoneTypeService>(database, connection_string);
  for (const auto& type : phone_types_) type_service.AddPhoneType(type);
  auto line_service = Connected<contacts::PhoneLineService>(database, connection_string);
  for (const auto& line : phone_lines_) line_service.AddPhoneLine(line);
  if (field_names_) {
    Connected<contacts::UserFieldService>(database, connection_string).StoreUserFieldNames(*field_names_);
  }
  if (contacts_.empty()) return;
  const auto types = type_service.GetPhoneTypes();
  auto component = Connected<contacts::CTIContacts>(database, connection_string);
  for (Entry entry : contacts_) {
    for (const auto& [phone, written] : entry.phone_types) {
      entry.contact.PhoneType[static_cast<std::size_t>(phone)] = TypeKey(written, types, entry.line);
    }
    component.CreateContact(entry.contact);
  }
}

void LoadAddressBook(std::string_view script, ports::Database& database, std::string_view connection_string) {
  AddressBook book;
  for (const Action& action : ParseScript(script)) {
    if (!book.Add(action)) throw ScriptError(action.line, "this action is not for an address book");
  }
  book.Store(database, connection_string);
}

}  // namespace kestro::scenario
