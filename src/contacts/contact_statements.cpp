#include "contacts/contact_statements.h"

#include <array>

#include "base/text.h"
#include "contacts/search_hash.h"

namespace kestro::contacts {
namespace {

constexpr std::array<std::string_view, kPhoneCount> kPhoneTypeColumns = {"PhoneType1", "PhoneType2",
                                                                         "PhoneType3", "PhoneType4"};

constexpr std::array<std::string_view, kPhoneCount> kSearchHashColumns = {"SearchHash1", "SearchHash2",
                                                                          "SearchHash3", "SearchHash4"};

using Texts = std::vector<std::string_view>;

/// Columns of the record without the key: the text properties, then the phone types.
Texts Columns() {
  Texts columns;
  for (const auto& property : TextProperties()) columns.push_back(property.name);
  columns.insert(columns.end(), kPhoneTypeColumns.begin(), kPhoneTypeColumns.end());
  return columns;
}

/// Each part followed by `suffix`, separated by commas.
std::string Joined(const Texts& parts, std::string_view suffix = {}) {
  std::string text;
  for (const auto part : parts) {
    if (!text.empty()) text += ", ";
    text.append(part).append(suffix);
  }
  return text;
}

/// The hash finds the few rows of which one may be meant, the text decides.
std::string PhoneCondition() {
  std::string condition;
  for (const char number : std::string_view("1234")) {
    if (!condition.empty()) condition += " OR ";
    condition.append("(SearchHash").append(1, number).append(" = ?1 AND SearchPhone").append(1, number);
    condition += " = ?2)";
  }
  return condition;
}

ContactStatements MakeStatements() {
  constexpr std::string_view kHashMark = "NULLIF(?, 0)";
  const Texts columns = Columns();
  const Texts hashes(kSearchHashColumns.begin(), kSearchHashColumns.end());
  const std::string select = "SELECT id_Contact, " + Joined(columns) + " FROM Contact WHERE ";
  const std::string set_hash = std::string(" = ").append(kHashMark);
  return {
      .select_by_key = select + "id_Contact = ?",
      .select_by_phone = select + PhoneCondition() + " ORDER BY id_Contact",
      .insert = "INSERT INTO Contact (" + Joined(columns) + ", " + Joined(hashes) + ") VALUES (" +
                Joined(Texts(columns.size(), "?")) + ", " + Joined(Texts(hashes.size(), kHashMark)) + ")",
      .update = "UPDATE Contact SET " + Joined(columns, " = ?") + ", " + Joined(hashes, set_hash) +
                " WHERE id_Contact = ?",
  };
}

}  // namespace

const ContactStatements& GetContactStatements() {
  static const ContactStatements kStatements = MakeStatements();
  return kStatements;
}

KeysetQuery MakeContactSearch(std::string_view name, std::string_view company, std::string_view city,
                              std::string_view note) {
  struct Condition {
    std::string_view text;
    std::string_view part;
  };
  const Condition conditions[] = {{"ContainsText(Name, ?)", name},
                                  {"ContainsText(Company, ?)", company},
                                  {"ContainsText(City, ?)", city},
                                  {"ContainsText(Note, ?)", note}};
  KeysetQuery search{.table = "Contact",
                     .fields = {"id_Contact", "Name", "Company", "City", "Phone1"},
                     .first_order = "Name",
                     .condition = {},
                     .values = {}};
  for (const auto& [text, part] : conditions) {
    if (part.empty()) continue;
    if (!search.values.empty()) search.condition += " AND ";
    search.condition += text;
    search.values.emplace_back(part);
  }
  return search;
}

std::vector<DatabaseSession::Value> ContactValues(Contact& contact) {
  std::vector<DatabaseSession::Value> values;
  values.reserve(TextProperties().size() + contact.PhoneType.size() + contact.SearchPhone.size() + 1);
  for (const auto& property : TextProperties()) values.emplace_back(std::string_view(property.of(contact)));
  for (const auto type : contact.PhoneType) values.emplace_back(type);
  for (const auto& phone : contact.SearchPhone) values.emplace_back(std::int64_t{SearchHash(phone)});
  return values;
}

Contact ReadContact(const ports::Recordset& row) {
  Contact contact;
  int column = 0;
  contact.id_Contact = row.Integer(column++);
  for (const auto& property : TextProperties()) property.of(contact) = row.Text(column++);
  for (auto& type : contact.PhoneType) type = row.Integer(column++);
  return contact;
}

void CutToWidths(Contact& contact) {
  for (const auto& property : TextProperties()) {
    if (!property.width) continue;
    std::string& text = property.of(contact);
    text.resize(base::FirstCharacters(text, static_cast<std::size_t>(*property.width)).size());
  }
}

}  // namespace kestro::contacts
