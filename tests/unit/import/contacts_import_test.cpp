#include "import/contacts_import.h"

#include <filesystem>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "contacts/database_session.h"
#include "support/import_bench.h"
#include "support/no_files.h"
#include "support/passing_command.h"
#include "unit/support/contacts_database.h"
#include "unit/support/stepping_clock.h"
#include "unit/support/text_file.h"

namespace kestro::import {
namespace {

using test::ImportBench;
using test_support::ContactsDatabase;
using test_support::TextFile;
using Texts = std::vector<std::string>;

/// Refuses to store contacts of one name.
class RefusingCommand final : public test::PassingCommand {
 public:
  RefusingCommand(std::unique_ptr<ports::Command> command, const std::string& refused)
      : PassingCommand(std::move(command)), refused_(refused) {}
  void SetCommandText(std::string_view text) override {
    stores_ = text.starts_with("INSERT INTO Contact");
    PassingCommand::SetCommandText(text);
  }
  using PassingCommand::AppendParameter;
  void AppendParameter(std::string_view value) override {
    if (!name_) name_ = value;
    PassingCommand::AppendParameter(value);
  }
  std::unique_ptr<ports::Recordset> Execute(int options) override {
    const auto name = std::exchange(name_, std::nullopt);  // the parameters are used up
    if (stores_ && !refused_.empty() && name == refused_) {
      throw base::RuntimeError(base::kDatabaseError, "refused");
    }
    return PassingCommand::Execute(options);
  }

 private:
  const std::string& refused_;
  std::optional<std::string> name_;  // the first text
  bool stores_ = false;
};

/// One file, made anew by `open` each time it is opened.
class OneFile final : public test::NoFiles {
 public:
  bool FileExists(std::string_view) const override { return true; }
  std::unique_ptr<ports::FileReader> OpenForReading(std::string_view) const override { return open(); }

  std::function<std::unique_ptr<ports::FileReader>()> open;
};

std::unique_ptr<ports::FileReader> OpenText(std::string text) {
  return std::make_unique<TextFile>(std::move(text));
}

[[noreturn]] std::size_t FailToRead() {
  throw base::RuntimeError(base::kPathAccessError, "Path/File access error");
}

std::string NumberedLines(int count) {
  std::string text;
  for (int i = 1; i <= count; ++i) text += std::to_string(i) + "\n";
  return text;
}

class ContactsImportTest : public testing::Test {
 protected:
  ContactsImportTest() {
    // Nothing is counted that is not stored.
    bench_.host().on_control_changed = [this](const forms::Control& control) {
      if (&control != &bench_.window().importedContactsLabel) return;
      ++counts_shown_;
      EXPECT_GE(Stored(), bench_.Count());
    };
  }

  void Import(std::string text) {
    files_.open = [text = std::move(text)] { return OpenText(text); };
    bench_.Import("a.csv");
  }
  /// What has reached the file: a copy of it shows no more.
  [[nodiscard]] long Stored() {
    const auto copy = book_.folder().File("copy.mdb");
    std::filesystem::copy_file(book_.path(), copy, std::filesystem::copy_options::overwrite_existing);
    auto other = test_support::MakeSqlite();
    contacts::DatabaseSession session(other, test_support::ConnectionString(copy.string()));
    return static_cast<long>(session.Query("SELECT COUNT(*) FROM Contact")->Integer(0));
  }
  [[nodiscard]] Texts Names() {
    contacts::DatabaseSession session(database_, book_.connection_string());
    Texts names;
    const auto rows = session.Query("SELECT Name FROM Contact ORDER BY id_Contact");
    for (; !rows->AtEnd(); rows->MoveNext()) names.emplace_back(rows->Text(0));
    return names;
  }
  /// There is a contact of that name, and the database takes no further one.
  void RefuseMoreThanOne(const std::string& name) {
    contacts::DatabaseSession session(database_, book_.connection_string());
    session.Run("INSERT INTO Contact (Name) VALUES ('" + name + "')");
    database_.state = name;
  }

  ContactsDatabase book_;
  test::WrappedDatabase<RefusingCommand, std::string> database_{book_.database()};
  OneFile files_;
  test_support::SteppingClock clock_;
  ImportBench bench_{database_, book_.path().string(), files_, clock_};
  int counts_shown_ = 0;
};

TEST_F(ContactsImportTest, AContactThatCannotBeStoredTakesNoOtherOneAlong) {
  RefuseMoreThanOne("bad");
  Import("1\n2\nbad\n4\n5\n6\n7\nbad\n9\n10\nbad\n12\n");
  EXPECT_EQ((Texts{"bad", "1", "2", "4", "5", "6", "7", "9", "10", "12"}), Names());
  EXPECT_EQ((Texts{"Line 3. of imported file was not imported. Do you want to continue?",
                   "Line 8. of imported file was not imported. Do you want to continue?",
                   "Line 11. of imported file was not imported. Do you want to continue?",
                   "Contacts' import finished successfully. 9 contacts were imported."}),
            bench_.boxes);
}

TEST_F(ContactsImportTest, NothingBehindALineThatEndedTheImportIsStored) {
  RefuseMoreThanOne("6");
  bench_.on_question = [](const std::string&) { return ports::BoxAnswer::kNo; };
  // Line 7 would make a telephone type; it was read together with line 6.
  Import("1\n2\n3\n4\n5\n6\n7;;;;;;;Yacht\n");
  EXPECT_EQ((Texts{"6", "1", "2", "3", "4", "5"}), Names());
  EXPECT_EQ("Import of contacts was interrupted.  5 contacts were imported.", bench_.boxes.back());
  contacts::PhoneTypeService types(database_);
  types.SetConnectionString(book_.connection_string());
  for (const auto& type : types.GetPhoneTypes()) EXPECT_NE("Yacht", type.name);
}

TEST_F(ContactsImportTest, AFileThatCannotBeReadFurtherKeepsWhatWasRead) {
  files_.open = [&, opened = 0]() mutable -> std::unique_ptr<ports::FileReader> {
    return ++opened == 1 ? OpenText("1\n2\n3\n4\n5\n")
                         : std::make_unique<TextFile>("1\n2\n3\n4\n5", SIZE_MAX, FailToRead);
  };
  bench_.Import("a.csv");
  EXPECT_EQ((Texts{"1", "2", "3", "4"}), Names());
  EXPECT_EQ(
      Texts{
          "An error occurred during contact import. The import will be terminated.4contacts were imported."},
      bench_.boxes);
  EXPECT_FALSE(bench_.window().loaded());

  // Already the first pass, or a file that vanished between the two.
  for (const int failing : {1, 2}) {
    bench_.boxes.clear();
    files_.open = [failing, opened = 0]() mutable -> std::unique_ptr<ports::FileReader> {
      if (++opened == failing) throw base::RuntimeError(base::kFileNotFound, "File not found");
      return OpenText("1\n");
    };
    bench_.Import("a.csv");
    EXPECT_EQ(Texts{"An error occurred during contact import. The import will be terminated.0contacts were "
                    "imported."},
              bench_.boxes);
  }
  EXPECT_EQ(4, Stored());
}

TEST_F(ContactsImportTest, AFileThatGrowsIsImportedToItsEnd) {
  int opened = 0;
  files_.open = [&] { return OpenText(NumberedLines(++opened == 1 ? 3 : 5)); };
  bench_.host().on_control_changed = [&](const forms::Control&) {
    const auto& bar = bench_.window().ImportProgress;
    EXPECT_LE(bar.value(), bar.maximum());
  };
  bench_.Import("a.csv");
  EXPECT_EQ(5, Stored());
}

TEST_F(ContactsImportTest, ALineOfAHundredMegabytesIsOneInvalidLineAndPauses) {
  // NOLINTNEXTLINE(bugprone-string-constructor)
  files_.open = [] { return OpenText(std::string(100'000'000, 'x')); };
  clock_.step = std::chrono::milliseconds(1);  // a look at the clock a block
  int pauses = 0;
  bench_.host().on_pause = [&] { ++pauses; };
  bench_.Import("a.csv");
  EXPECT_EQ((Texts{"Structure of line 1. in the imported file is invalid. Line will be not imported."
                   "Continue at next contact?",
                   "Contacts' import finished successfully. 0 contacts were imported."}),
            bench_.boxes);
  EXPECT_LT(60, pauses) << "in each of the two passes one in 40 looks at the clock";
}

TEST_F(ContactsImportTest, AbortIsHeardWhileTheLinesAreCounted) {
  clock_.step = std::chrono::milliseconds(50);
  int pauses = 0;
  bench_.host().on_pause = [&] {
    if (++pauses == 3) bench_.window().CancelButton.Click();
  };
  Import(NumberedLines(100));
  EXPECT_EQ(3, pauses);
  EXPECT_EQ((Texts{"Import is still in progress. Do you really want to exit?",
                   "Import of contacts was interrupted.  0 contacts were imported."}),
            bench_.boxes);
}

TEST_F(ContactsImportTest, GroupsGrowWhileThereIsTime) {
  Import(NumberedLines(20'000));
  EXPECT_EQ(20'000, Stored());
  EXPECT_LT(counts_shown_, 30);
  counts_shown_ = 0;
  clock_.step = std::chrono::milliseconds(30);  // then every line is a long time
  Import(NumberedLines(60));
  EXPECT_LT(25, counts_shown_);
}

TEST_F(ContactsImportTest, TelephoneTypesFollowTheDatabase) {
  Import("a;;;;;;;Yacht\n");
  ContactsDatabase other;
  bench_.UseDatabase(other.path().string());
  Import("b;;;;;;;Yacht\n");
  contacts::PhoneTypeService types(database_);
  types.SetConnectionString(other.connection_string());
  EXPECT_EQ("Yacht", types.GetPhoneTypes().back().name);
}

}  // namespace
}  // namespace kestro::import
