#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/sqlite_handle.h"
#include "contacts/close_recordset.h"
#include "contacts/contact_statements.h"
#include "contacts/cti_contacts.h"
#include "contacts/database_session.h"
#include "contacts/keyset_pages.h"
#include "support/error_number.h"
#include "support/log_capture.h"
#include "support/passing_command.h"
#include "unit/support/contacts_database.h"
#include "unit/support/recordset_contract.h"

namespace kestro::contacts {
namespace {

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

using test::ErrorNumberOf;

/// Passes a command on and counts its runs.
class CountedCommand final : public test::PassingCommand {
 public:
  CountedCommand(std::unique_ptr<ports::Command> command, int& runs)
      : PassingCommand(std::move(command)), runs_(runs) {}
  std::unique_ptr<ports::Recordset> Execute(int options) override {
    ++runs_;
    return PassingCommand::Execute(options);
  }

 private:
  int& runs_;
};

class ContactListTest : public testing::Test {
 protected:
  CTIContacts Component(ports::Database& database) {
    CTIContacts component(database);
    component.SetConnectionString(store_.connection_string());
    return component;
  }
  CTIContacts Component() { return Component(store_.database()); }
  std::int64_t Create(std::string_view name, std::string_view company = {}, std::string_view city = {},
                      std::string_view phone = {}) {
    Contact contact;
    contact.Name = name;
    contact.Company = company;
    contact.City = city;
    contact.Phone[0] = phone;
    return Component().CreateContact(contact);
  }
  /// "Name 0", "Name 1" and so on with as many digits as are needed to sort by them.
  void CreateMany(int count) {
    DatabaseSession session(store_.database(), store_.connection_string());
    session.InTransaction([&] {
      for (int i = 0; i < count; ++i) {
        const auto number = std::to_string(1'000'000 + i).substr(1);
        session.Run("INSERT INTO Contact (Name) VALUES (?)", {std::string_view(number)});
      }
    });
  }
  std::unique_ptr<ports::Recordset> All() { return Component().SearchContacts({}, {}, {}, {}); }
  static Texts Column(ports::Recordset& rows, int index = 1) {
    Texts texts;
    for (std::int64_t row = 0; row < rows.RecordCount(); ++row) {
      rows.MoveTo(row);
      texts.emplace_back(rows.Text(index));
    }
    return texts;
  }

  test_support::ContactsDatabase store_;
  test::LogCapture capture_;
  core::LogModule log_{capture_};
};

TEST_F(ContactListTest, OrdersByNameAndThenByKey) {
  for (const auto* const name :
       {"Zeman", "Čech", "cihlář", "Adam", "Čech", "ádam", "Řehoř", "adam", "", "Rehor"}) {
    Create(name);
  }
  const auto rows = All();
  EXPECT_EQ(Column(*rows),
            (Texts{"", "adam", "Adam", "ádam", "Čech", "Čech", "cihlář", "Rehor", "Řehoř", "Zeman"}));
  EXPECT_EQ(Column(*rows, 0), (Texts{"9", "8", "4", "6", "2", "5", "3", "10", "7", "1"}));
  rows->SetSort("Name DESC");
  EXPECT_EQ(Column(*rows, 0), (Texts{"1", "7", "10", "3", "2", "5", "6", "4", "8", "9"}));
}

TEST_F(ContactListTest, AListWithoutRowsIsAtItsEnd) {
  const auto rows = All();
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_TRUE(rows->AtEnd());
  EXPECT_EQ(ErrorNumberOf([&] { rows->MoveTo(0); }), base::kSubscriptOutOfRange);
  EXPECT_EQ(ErrorNumberOf([&] { return rows->Field(0); }), base::kDatabaseError);
  EXPECT_NO_THROW(rows->SetSort("City DESC"));
  EXPECT_EQ(rows->RecordCount(), 0);
}

TEST_F(ContactListTest, FindsWhatWasTypedLiterally) {
  for (const auto name :
       {"Pat O'Hara"sv, "100 %_x"sv, "100 percent x"sv, R"("quoted")"sv, "a\0b"sv, "ab"sv, "?"sv}) {
    Create(name, name, name);
  }
  const struct {
    std::string_view part;
    std::string_view found;
  } cases[] = {{"O'HARA", "Pat O'Hara"}, {"100 %_x", "100 %_x"}, {"_", "100 %_x"},
               {"\"Q", "\"quoted\""},    {"\0B"sv, "a\0b"sv},    {"?", "?"}};
  for (const auto& [part, found] : cases) {
    const auto rows = Component().SearchContacts(part, part, part, {});
    EXPECT_EQ(Column(*rows), Texts{std::string(found)}) << part;
  }
  EXPECT_EQ(Component().SearchContacts("O''Hara", {}, {}, {})->RecordCount(), 0);
}

TEST_F(ContactListTest, ShowsWhatOthersDidSinceTheKeysWereCollected) {
  for (const auto* const name : {"a", "b", "c"}) Create(name, "firm");
  const auto rows = All();
  Component().DeleteContact(2);
  Contact renamed = *Component().GetContact(1);
  renamed.Name = "z";
  Component().UpdateContact(renamed);
  Create("d");
  EXPECT_EQ(Column(*rows), (Texts{"z", "", "c"}));  // in the old order
  rows->MoveTo(1);
  EXPECT_EQ(rows->Field(0), ports::DatabaseValue(std::int64_t{2}));
  EXPECT_EQ(rows->Text(0), "2");
  EXPECT_EQ(rows->Field(2), ports::DatabaseValue(ports::Null{}));
  EXPECT_EQ(rows->Text(2), "");
  rows->MoveNext();
  EXPECT_EQ(rows->Field(2), ports::DatabaseValue("firm"));
  rows->SetSort("Name");
  EXPECT_EQ(Column(*rows), (Texts{"c", "d", "z"}));
}

TEST_F(ContactListTest, StandsInNobodysWay) {
  CreateMany(300);
  const auto rows = All();
  const auto filtered = Component().SearchContacts("1", {}, {}, {});
  static_cast<void>(rows->Text(1));
  static_cast<void>(filtered->Text(1));
  // Nothing of theirs keeps the file open: with another one in use, other programs may have it.
  const auto other = store_.folder().File("other.mdb");
  test_support::MakeContactsDatabase(other);
  { const DatabaseSession session(store_.database(), test_support::ConnectionString(other.string())); }
  EXPECT_NO_THROW(adapters::SqliteHandle(test_support::Files(), store_.path()));
  EXPECT_NO_THROW(Component().DeleteContact(299));
}

TEST_F(ContactListTest, AReadingThatFailsCanBeRepeated) {
  CreateMany(100);
  const auto rows = All();
  const auto elsewhere = store_.folder().File("elsewhere.mdb");
  std::filesystem::rename(store_.path(), elsewhere);
  EXPECT_EQ(ErrorNumberOf([&] { return rows->Text(1); }), base::kDatabaseError);
  EXPECT_EQ(ErrorNumberOf([&] { rows->SetSort("City"); }), base::kDatabaseError);
  std::filesystem::rename(elsewhere, store_.path());
  EXPECT_EQ(rows->Sort(), "");
  EXPECT_EQ(rows->Text(1), "000000");
  EXPECT_EQ(rows->RecordCount(), 100);
}

TEST_F(ContactListTest, ReadsPagesNotRowsAndKeepsAFewOfThem) {
  constexpr auto kKept = static_cast<int>(KeysetPages::kPages);
  constexpr auto kPageRows = static_cast<int>(KeysetPages::kPageRows);
  CreateMany((kKept + 1) * kPageRows);
  test::WrappedDatabase<CountedCommand, int> database(store_.database());
  const auto rows = Component(database).SearchContacts({}, {}, {}, {});
  const auto runs_of = [&](const std::function<void()>& action) {
    database.state = 0;
    action();
    return database.state;
  };
  const auto read_pages = [&](int first, int count) {
    for (int row = first * kPageRows; row < (first + count) * kPageRows; ++row) {
      rows->MoveTo(row);
      EXPECT_EQ(rows->Integer(1), row);
    }
  };
  EXPECT_EQ(database.state, 1);
  EXPECT_EQ(runs_of([&] { read_pages(0, kKept); }), kKept);
  EXPECT_EQ(runs_of([&] { read_pages(0, kKept); }), 0);
  // The page that was not looked at for the longest time goes.
  EXPECT_EQ(runs_of([&] { read_pages(0, 1); }), 0);
  EXPECT_EQ(runs_of([&] { read_pages(kKept, 1); }), 1);
  EXPECT_EQ(runs_of([&] { read_pages(0, 1); }), 0);
  EXPECT_EQ(runs_of([&] { read_pages(2, kKept - 1); }), 0);
  EXPECT_EQ(runs_of([&] { read_pages(1, 1); }), 1);
  EXPECT_EQ(runs_of([&] { rows->SetSort("Name"); }), 1);
  EXPECT_EQ(runs_of([&] { read_pages(0, 1); }), 1);
}

TEST_F(ContactListTest, IsARecordsetAndClosedOnce) {
  for (const auto* const name : {"b", "c", "a"}) Create(name);
  auto rows = All();
  EXPECT_EQ(rows->ActiveConnection(), nullptr);
  test_support::ExpectContract(*rows, 1, "Name");
  const Functions::RecordsetClosing closing(log_);
  closing.CloseRecordset(rows);  // a second time, without a connection
  EXPECT_EQ(rows, nullptr);
  rows = All();
  closing.CloseRecordset(rows);
  EXPECT_EQ(rows, nullptr);
}

TEST_F(ContactListTest, OnlyTheWholeListFollowsTheOrderOfTheDatabase) {
  const auto plan = [&](const KeysetQuery& query, const SortOrder& order) {
    DatabaseSession session(store_.database(), store_.connection_string());
    const std::vector<DatabaseSession::Value> values(query.values.begin(), query.values.end());
    const auto rows = session.Query("EXPLAIN QUERY PLAN " + KeysStatement(query, order), values);
    std::string text;
    for (; !rows->AtEnd(); rows->MoveNext()) text.append(rows->Text(rows->FieldIndex("detail"))).append("; ");
    return text;
  };
  constexpr auto kSorted = "USE TEMP B-TREE FOR ORDER BY";
  for (const SortOrder& order : {SortOrder{"Name", false}, SortOrder{"Company", true}}) {
    EXPECT_EQ(plan(MakeContactSearch({}, {}, {}, {}), order).find(kSorted), std::string::npos);
    EXPECT_NE(plan(MakeContactSearch({}, "a", {}, {}), order).find(kSorted), std::string::npos);
  }
}

}  // namespace
}  // namespace kestro::contacts
