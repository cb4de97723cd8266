#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "contacts/cti_contacts.h"
#include "contacts/database_session.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"

namespace kestro::contacts {
namespace {

class ContactServicesTest : public testing::Test {
 protected:
  template <typename Service>
  Service Make() {
    Service service(store_.database());
    service.SetConnectionString(store_.connection_string());
    return service;
  }
  void Run(std::string_view text) {
    DatabaseSession(store_.database(), store_.connection_string()).Run(text);
  }

  test_support::ContactsDatabase store_;
};

std::vector<std::string> Texts(ports::Recordset& rows) {
  std::vector<std::string> texts;
  for (; !rows.AtEnd(); rows.MoveNext()) texts.emplace_back(rows.Text(0));
  return texts;
}

TEST_F(ContactServicesTest, KeepsInternalLinesByNumber) {
  auto service = Make<PhoneLineService>();
  EXPECT_TRUE(service.GetPhoneLines().empty());
  const auto first = service.AddPhoneLine({0, "110", "Reception's \"desk\""});
  const auto second = service.AddPhoneLine({0, "21", "Říha"});
  service.AddPhoneLine({0, "21", "again"});
  Run("INSERT INTO PhoneLine (Line, Name) VALUES ('-5', NULL), ('no number', 'x')");

  auto lines = service.GetPhoneLines();
  std::vector<std::string> numbers;
  for (const auto& line : lines) numbers.push_back(line.Line);
  EXPECT_EQ(numbers, (std::vector<std::string>{"-5", "21", "21", "110", "no number"}));
  EXPECT_EQ(lines[0].Name, std::nullopt);
  EXPECT_EQ(lines[1].id, second);
  EXPECT_EQ(lines[1].Name, "Říha");

  service.UpdatePhoneLine({first, "9", "moved"});
  service.DeletePhoneLine({second, "", std::nullopt});
  lines = service.GetPhoneLines();
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[1].id, first);
  EXPECT_EQ(lines[1].Name, "moved");
  EXPECT_EQ(lines[2].Name, "again");
  EXPECT_THROW(service.UpdatePhoneLine({second, "1", "gone"}), base::RuntimeError);
}

TEST_F(ContactServicesTest, KeepsPhoneTypesByOrder) {
  auto service = Make<PhoneTypeService>();
  const auto initial = service.GetPhoneTypes();
  ASSERT_FALSE(initial.empty());
  EXPECT_EQ(initial[0].name, "Work");
  EXPECT_EQ(initial[0].Order, 1);
  const auto last = service.AddPhoneType({0, "Dvacet znaků žlutých kůň", 1'000'000});
  const auto first = service.AddPhoneType({0, "", 1});
  const auto types = service.GetPhoneTypes();
  ASSERT_EQ(types.size(), initial.size() + 2);
  EXPECT_EQ(types.back().id, last);
  EXPECT_EQ(types.back().name, "Dvacet znaků žlutých");
  EXPECT_EQ(types.back().Order, 1'000'000);
  EXPECT_EQ(types[1].id, first);  // same order as "Work", made later
}

TEST_F(ContactServicesTest, KeepsOneRecordOfUserFieldNames) {
  auto service = Make<UserFieldService>();
  EXPECT_EQ(service.GetUserFieldNames(), std::nullopt);
  const UserFieldNames names = {"Děti", "it's", "\"x\"", "4"};
  service.StoreUserFieldNames(names);
  EXPECT_EQ(service.GetUserFieldNames(), names);
  const UserFieldNames changed = {"a", "b", "c", "d"};
  service.StoreUserFieldNames(changed);
  EXPECT_EQ(service.GetUserFieldNames(), changed);
  EXPECT_EQ(Texts(*DatabaseSession(store_.database(), store_.connection_string())
                       .Query("SELECT COUNT(*) FROM UserFields")),
            std::vector<std::string>{"1"});
}

TEST_F(ContactServicesTest, LeavesTheUserFieldNamesWhenStoringFails) {
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

TEST_F(ContactServicesTest, PickListsHoldKeptAndTypedEntriesOnce) {
  auto lists = Make<PickListService>();
  const auto positions = Texts(*lists.GetPositions());
  const auto countries = Texts(*lists.GetCountries());
  EXPECT_GE(positions.size(), 15U);
  EXPECT_GE(countries.size(), 60U);
  for (const auto* const position : {"Řezník", "Director", "Řezník", ""}) {
    Contact contact;
    contact.Position = position;
    contact.Country = "Österreich";
    Make<CTIContacts>().CreateContact(contact);
  }
  auto expected = positions;
  expected.insert(std::ranges::find(expected, "Sales manager"), "Řezník");
  EXPECT_EQ(Texts(*lists.GetPositions()), expected);
  auto expected_countries = countries;
  expected_countries.insert(std::ranges::find(expected_countries, "Pakistan"), "Österreich");
  const auto rows = lists.GetCountries();
  EXPECT_EQ(rows->FieldName(0), "Country");
  EXPECT_EQ(Texts(*rows), expected_countries);
}

}  // namespace
}  // namespace kestro::contacts
