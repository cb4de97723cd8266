#include "contacts/cti_contacts.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "base/text.h"
#include "contacts/contact_statements.h"
#include "contacts/search_hash.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"

namespace kestro::contacts {
namespace {

using namespace std::string_view_literals;

std::string Repeated(std::string_view text, std::size_t count) {
  std::string result;
  while (count-- > 0) result += text;
  return result;
}

class CTIContactsTest : public testing::Test {
 protected:
  CTIContacts Component() {
    CTIContacts component(store_.database());
    component.SetConnectionString(store_.connection_string());
    return component;
  }
  std::int64_t Create(std::string_view name, std::string_view search_phone = {}) {
    Contact contact;
    contact.Name = name;
    contact.SearchPhone[2] = search_phone;
    return Component().CreateContact(contact);
  }

  test_support::ContactsDatabase store_;
};

TEST_F(CTIContactsTest, KeepsEveryProperty) {
  Contact contact;
  int number = 0;
  for (const auto& property : TextProperties()) {
    property.of(contact) = std::string(property.name) + " '\"%_;\n ž\U0001F4DE" + std::to_string(++number);
  }
  contact.PhoneType = {4, 3, 2, 1};
  contact.id_Contact = Component().CreateContact(contact);
  EXPECT_EQ(Component().GetContact(contact.id_Contact), contact);

  for (const auto& property : TextProperties()) property.of(contact) += "changed";
  contact.PhoneType = {0, 1, 99, -1};
  const auto untouched = Create("other");
  Component().UpdateContact(contact);
  for (const auto& property : TextProperties()) {
    std::string& text = property.of(contact);
    if (property.width) text = base::FirstCharacters(text, static_cast<std::size_t>(*property.width));
  }
  EXPECT_EQ(Component().GetContact(contact.id_Contact), contact);
  EXPECT_EQ(Component().GetContact(untouched)->Name, "other");

  Component().DeleteContact(contact.id_Contact);
  EXPECT_EQ(Component().GetContact(contact.id_Contact), std::nullopt);
  EXPECT_NE(Component().GetContact(untouched), std::nullopt);
}

TEST_F(CTIContactsTest, CutsTextsAtTheirWidthInCharacters) {
  // The last character that fits takes one, two (with a combining mark behind it) or four bytes.
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"é", "x"}, {"é", "ř"}, {"é", "\u0301"}, {"é", "\U0001F4DE"}, {"\U0001F4DE", "\U0001F4DE"}};
  for (const auto& [other, last] : cases) {
    Contact contact;
    for (const auto& property : TextProperties()) {
      property.of(contact) = Repeated(other, static_cast<std::size_t>(property.width.value_or(3000)) - 1);
      property.of(contact).append(last).append("\u0302\U0001F4DE beyond");
    }
    auto stored = *Component().GetContact(Component().CreateContact(contact));
    for (const auto& property : TextProperties()) {
      if (!property.width) {
        EXPECT_EQ(property.of(stored), property.of(contact)) << property.name;
        continue;
      }
      const auto expected = Repeated(other, static_cast<std::size_t>(*property.width) - 1).append(last);
      EXPECT_EQ(property.of(stored), expected) << property.name;
    }
  }
}

TEST_F(CTIContactsTest, RefusesToUpdateAContactThatIsGone) {
  Contact contact;
  contact.id_Contact = 77;
  EXPECT_THROW(Component().UpdateContact(contact), base::RuntimeError);
  EXPECT_NO_THROW(Component().DeleteContact(77));
}

TEST_F(CTIContactsTest, FindsContactsByAnyOfTheirNumbers) {
  std::vector<std::int64_t> keys;
  for (std::size_t i = 0; i < kPhoneCount; ++i) {
    Contact contact;
    contact.SearchPhone[i] = "+420602111222";
    keys.push_back(Component().CreateContact(contact));
  }
  Contact twice;
  twice.SearchPhone = {"+420602111222", "+420602111222", "+420999", ""};
  keys.push_back(Component().CreateContact(twice));
  Create("no numbers");
  std::vector<std::int64_t> found;
  for (const auto& contact : Component().FindContactsByPhone("+420602111222")) {
    found.push_back(contact.id_Contact);
  }
  EXPECT_EQ(found, keys);
  EXPECT_EQ(Component().FindContactsByPhone("+420999").at(0), Component().GetContact(keys.back()));
  for (const auto phone : {"", "602111222", "+42060211122", "+420602111222 ", "%", "' OR ''='"}) {
    EXPECT_TRUE(Component().FindContactsByPhone(phone).empty()) << phone;
  }
}

TEST_F(CTIContactsTest, HashesSearchFormsAsFilesHoldThem) {
  const std::pair<std::string_view, std::uint32_t> cases[] = {
      {"", 0}, {"a", 0xE40C292C}, {"foobar", 0xBF9CF968}, {"+420602111222", 0x7454B6A9}, {"č", 0x8290273A}};
  for (const auto& [text, hash] : cases)
    EXPECT_EQ(static_cast<std::uint32_t>(SearchHash(text)), hash) << text;
}

TEST_F(CTIContactsTest, ComparesNumbersOfTheSameHashInFull) {
  const auto key = Create("same hash", "+420602111222");
  DatabaseSession session(store_.database(), store_.connection_string());
  session.Run("UPDATE Contact SET SearchHash3 = ? WHERE id_Contact = ?",
              {std::int64_t{SearchHash("+420999")}, key});
  EXPECT_TRUE(Component().FindContactsByPhone("+420999").empty());
  Component().UpdateContact(*Component().GetContact(key));  // sets the hash right
  EXPECT_EQ(Component().FindContactsByPhone("+420602111222").size(), 1U);
}

TEST_F(CTIContactsTest, LooksNumbersUpThroughTheFourIndexes) {
  DatabaseSession session(store_.database(), store_.connection_string());
  const auto rows = session.Query("EXPLAIN QUERY PLAN " + GetContactStatements().select_by_phone,
                                  {std::int64_t{1}, "+420602111222"sv});
  std::set<std::string> look_ups;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::string_view step = rows->Text(rows->FieldIndex("detail"));
    if (step.starts_with("SCAN")) look_ups.emplace(step);
  }
  EXPECT_EQ(look_ups.size(), 4U);
  EXPECT_FALSE(look_ups.contains("SCAN Contact VIRTUAL TABLE INDEX 0:"));
}

TEST_F(CTIContactsTest, LeavesTheUserFieldNamesWhenStoringFails) {
  test_support::FaultyFiles files(test_support::Files());
  auto database = test_support::MakeSqlite(files);
  UserFieldService service(database);
  service.SetConnectionString(store_.connection_string());
  const UserFieldNames names = {"1", "2", "3", "4"};
  service.StoreUserFieldNames(names);
  files.before_change = [] { throw jet::Error(jet::ErrorKind::kFileSystem, "disk full"); };
  EXPECT_THROW(service.StoreUserFieldNames({"refused", "", "", ""}), base::RuntimeError);
  files.before_change = [] {};
  EXPECT_EQ(service.GetUserFieldNames(), names);
}

}  // namespace
}  // namespace kestro::contacts
