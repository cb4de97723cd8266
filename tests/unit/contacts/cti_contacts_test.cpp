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
#include "contacts/caller_id.h"
#include "contacts/contact_statements.h"
#include "contacts/search_hash.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"

namespace kestro::contacts {
namespace {

using namespace std::string_view_literals;

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

TEST_F(CTIContactsTest, KeepsEveryPropertyUpToItsWidthInCharacters) {
  Contact contact;
  int number = 0;
  for (const auto& property : TextProperties()) {
    property.of(contact) = std::string(property.name) + " '\"%_;\n ž\U0001F4DE" + std::to_string(++number);
  }
  contact.PhoneType = {4, 3, 2, 1};
  contact.id_Contact = Component().CreateContact(contact);
  EXPECT_EQ(Component().GetContact(contact.id_Contact), contact);

  Contact wide = contact;
  wide.PhoneType = {0, 1, 99, -1};
  std::string tail;
  while (tail.size() < 20'000) tail += "é\u0301\U0001F4DE";
  for (const auto& property : TextProperties()) property.of(wide) += tail;
  Contact cut = wide;
  for (const auto& property : TextProperties()) {
    std::string& text = property.of(cut);
    if (property.width) text = base::FirstCharacters(text, static_cast<std::size_t>(*property.width));
  }
  const auto untouched = Create("other");
  Component().UpdateContact(wide);
  EXPECT_EQ(Component().GetContact(contact.id_Contact), cut);
  EXPECT_EQ(Component().GetContact(untouched)->Name, "other");
  Component().DeleteContact(contact.id_Contact);
  EXPECT_EQ(Component().GetContact(contact.id_Contact), std::nullopt);
  EXPECT_NE(Component().GetContact(untouched), std::nullopt);

  cut.id_Contact = Component().CreateContact(wide);
  EXPECT_EQ(Component().GetContact(cut.id_Contact), cut);
  ++cut.id_Contact;
  Component().CreateContacts({&wide, 1});
  EXPECT_EQ(Component().GetContact(cut.id_Contact), cut);
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
  service.StoreUserFieldNames({"earlier", "ones", "", ""});
  service.StoreUserFieldNames(names);
  files.before_change = [] { throw jet::Error(jet::ErrorKind::kFileSystem, "disk full"); };
  EXPECT_THROW(service.StoreUserFieldNames({"refused", "", "", ""}), base::RuntimeError);
  files.before_change = [] {};
  EXPECT_EQ(service.GetUserFieldNames(), names);
}

TEST_F(CTIContactsTest, ALineThatIsGoneCannotBeChanged) {
  PhoneLineService lines(store_.database());
  lines.SetConnectionString(store_.connection_string());
  PhoneLine line{.id = 0, .Line = "21", .Name = "Jan"};
  line.id = lines.AddPhoneLine(line);
  lines.UpdatePhoneLine(line);
  lines.DeletePhoneLine(line);
  EXPECT_THROW(lines.UpdatePhoneLine(line), base::RuntimeError);
}

TEST(CallerIdTest, InternationalForm) {
  for (const auto& [given, expected] : {std::pair{"", ""},
                                        {"   ", ""},
                                        {"5", "5"},
                                        {"0", "0"},
                                        {"+", "+"},
                                        {"12", "+42012"},
                                        {"00", "+4200"},
                                        {"001", "+1"},
                                        {"101", "+420101"},
                                        {"00421234567", "+421234567"},
                                        {"+420602111222", "+420602111222"},
                                        {"602111222", "+420602111222"},
                                        {" 0602111222 ", "+420602111222"},
                                        {"0602 11", "+420602 11"},
                                        {"ž1", "+420ž1"},
                                        {"ž", "ž"}}) {
    EXPECT_EQ(InternationalCallerId(given), expected) << given;
  }
}

TEST(CallerIdTest, SeparatorsAreRemovedFirst) {
  for (const auto& [given, expected] : {std::pair{"(0602) 111-222/3", "+4206021112223"},
                                        {"00 421 / 2 345.67", "+421234567"},
                                        {"+420 602\\111 222", "+420602111222"},
                                        {" - ", ""},
                                        {"602\t111", "+420602\t111"}}) {
    EXPECT_EQ(InternationalCallerIdFromText(given), expected) << given;
  }
}

}  // namespace
}  // namespace kestro::contacts
