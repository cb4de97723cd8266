#include "adapters/posix/settings_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/settings_text.h"
#include "unit/posix/posix_support.h"
#include "unit/support/stepping_clock.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using adapters::SettingsFile;
using test::Permissions;
using test_support::ReadFile;
using test_support::WriteFile;

constexpr const char* kKey = "Software\\Kestro\\CTI";

class SettingsFileTest : public testing::Test {
 protected:
  SettingsFile Open() { return Open(path_); }
  SettingsFile Open(const fs::path& path) {
    return {path, clock_, [this](const std::string& text) { reports_.push_back(text); }};
  }
  void Write(std::string_view content) {
    fs::create_directories(path_.parent_path());
    WriteFile(path_, content);
  }
  std::optional<std::string> Stored(const char* name) { return Open().QueryValue(kKey, name); }
  std::ptrdiff_t FileCount() const { return test_support::FileCount(path_.parent_path()); }

  test_support::TemporaryFolder folder_;
  fs::path path_ = folder_.File("config/kestro-cti/settings.conf");
  test_support::SteppingClock clock_;
  std::vector<std::string> reports_;
};

TEST_F(SettingsFileTest, KeepsWhatIsSavedForTheUserAlone) {
  const test::ScopedUmask open(0);
  SettingsFile settings = Open();
  EXPECT_FALSE(fs::exists(path_.parent_path())) << "reading makes nothing";
  EXPECT_EQ(std::nullopt, settings.QueryValue(kKey, "PhoneLine"));
  EXPECT_EQ(2, settings.SetValue(kKey, "PhoneLine", "x")) << "no key yet";
  EXPECT_EQ(0, settings.CreateKey(kKey));
  EXPECT_EQ(0, settings.SetValue(kKey, "PhoneLine", " EXT 101\n"));
  EXPECT_EQ(0, settings.SetValue(kKey, "DatabasePath", "\\home\\žluťoučký\\CTIDB.mdb"));
  EXPECT_EQ(0, settings.SetValue(kKey, "phoneline", ""));
  EXPECT_EQ("", Stored("PhoneLine"));
  EXPECT_EQ("\\home\\žluťoučký\\CTIDB.mdb", Stored("DATABASEPATH"));
  EXPECT_EQ(std::nullopt, Stored("LogIntoFile"));
  EXPECT_EQ(0600, Permissions(path_));
  EXPECT_EQ(0700, Permissions(path_.parent_path()));
  EXPECT_EQ(1, FileCount());
  EXPECT_EQ(22, settings.CreateKey("Software\\\\CTI"));
  EXPECT_EQ(22, settings.SetValue(kKey, "\xFF", "1"));
  EXPECT_TRUE(reports_.empty());
}

TEST_F(SettingsFileTest, WhatAnotherProgramWroteStays) {
  SettingsFile settings = Open();
  settings.CreateKey(kKey);
  settings.SetValue(kKey, "LogIntoFile", "0");
  WriteFile(path_, "[Software\\Kestro\\CTI]\nLogIntoFile=1\nPhoneLine=edited\n");
  EXPECT_EQ(0, settings.SetValue(kKey, "DatabasePath", "x"));
  EXPECT_EQ("edited", settings.QueryValue(kKey, "PhoneLine"));
  EXPECT_EQ("1", Stored("LogIntoFile"));
  EXPECT_EQ("edited", Stored("PhoneLine"));
  EXPECT_EQ("x", Stored("DatabasePath"));

  SettingsFile second = Open();
  EXPECT_EQ(0, second.SetValue(kKey, "PhoneLine", "second"));
  EXPECT_EQ(0, settings.SetValue(kKey, "DatabasePath", "first"));
  EXPECT_EQ("second", Stored("PhoneLine"));

  fs::remove(path_);
  EXPECT_EQ(2, settings.SetValue(kKey, "DatabasePath", "x")) << "the user has removed all settings";
  EXPECT_EQ(std::nullopt, settings.QueryValue(kKey, "PhoneLine"));
}

TEST_F(SettingsFileTest, ADamagedFileIsKeptAsideAndReportedOnce) {
  const std::string contents[] = {"neither this nor that", std::string(100, '\0'), "[Software\n",
                                  "[K]\nName=\xFF\n", "# " + std::string(SettingsFile::kMostBytes, 'x')};
  const std::string aside = path_.string() + ".damaged-20261121-180305";
  int count = 0;
  for (const std::string& content : contents) {
    Write(content);
    SettingsFile settings = Open();
    const std::string kept = ++count == 1 ? aside : aside + "-" + std::to_string(count);
    EXPECT_EQ(content, ReadFile(kept));
    ASSERT_EQ(static_cast<std::size_t>(count), reports_.size());
    EXPECT_NE(std::string::npos, reports_.back().find(kept)) << reports_.back();
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_EQ(std::nullopt, settings.QueryValue(kKey, "PhoneLine"));
    EXPECT_EQ(0, settings.CreateKey(kKey));
    EXPECT_EQ(0, settings.SetValue(kKey, "PhoneLine", "new"));
    EXPECT_EQ("new", Stored("PhoneLine"));
  }
  EXPECT_EQ(contents[0], ReadFile(aside)) << "never overwritten";
}

TEST_F(SettingsFileTest, AFileDamagedWhileTheProgramRunsCostsNoSetting) {
  SettingsFile settings = Open();
  settings.CreateKey(kKey);
  settings.SetValue(kKey, "PhoneLine", "EXT 101");
  WriteFile(path_, "half a li");
  EXPECT_EQ(0, settings.SetValue(kKey, "PhoneLine", "EXT 101")) << "unchanged, and yet to be written";
  EXPECT_EQ("EXT 101", Stored("PhoneLine"));
  EXPECT_EQ(1U, reports_.size());
  EXPECT_EQ(2, FileCount());
}

TEST_F(SettingsFileTest, WhatCannotBeReadIsNeverWritten) {
  const std::function<void()> obstacles[] = {
      [&] { fs::create_directories(path_); },
      [&] {
        fs::create_directories(path_.parent_path());
        ::mkfifo(path_.c_str(), 0600);
      },
      [&] { WriteFile(folder_.File("config"), "a file where a folder is needed"); },
      [&] {
        fs::create_directories(path_.parent_path());
        fs::create_symlink(path_, path_);
      }};
  for (const auto& obstruct : obstacles) {
    reports_.clear();
    obstruct();
    const auto before = fs::symlink_status(path_).type();
    SettingsFile settings = Open();
    EXPECT_EQ(1U, reports_.size());
    EXPECT_EQ(13, settings.CreateKey(kKey));
    EXPECT_EQ(13, settings.SetValue(kKey, "PhoneLine", "x"));
    EXPECT_EQ(1U, reports_.size()) << reports_.back();
    EXPECT_EQ(before, fs::symlink_status(path_).type());
    fs::remove_all(folder_.File("config"));
    EXPECT_EQ(0, settings.CreateKey(kKey)) << "the obstacle is gone";
    fs::remove_all(folder_.File("config"));
  }
  SettingsFile homeless = Open("");
  EXPECT_EQ(13, homeless.CreateKey(kKey));
}

TEST_F(SettingsFileTest, AWriteProtectedFileIsNotReplaced) {
  Write("[Software\\Kestro\\CTI]\nPhoneLine=old\n");
  fs::permissions(path_, fs::perms(0400));
  SettingsFile settings = Open();
  EXPECT_EQ(13, settings.SetValue(kKey, "PhoneLine", "new"));
  EXPECT_EQ("old", settings.QueryValue(kKey, "PhoneLine"));
  EXPECT_EQ("old", Stored("PhoneLine"));
  EXPECT_EQ(1, FileCount());
}

TEST_F(SettingsFileTest, AFailedWriteLeavesTheOldFile) {
  SettingsFile settings = Open();
  settings.CreateKey(kKey);
  settings.SetValue(kKey, "PhoneLine", "old");
  const std::string before = ReadFile(path_);
  {
    const test::ScopedFileLimit limit(10'000);
    EXPECT_EQ(27, settings.SetValue(kKey, "PhoneLine", std::string(50'000, 'x')));
  }
  EXPECT_EQ(27, settings.SetValue(kKey, "PhoneLine", std::string(SettingsFile::kMostBytes, 'x')));
  EXPECT_EQ("old", settings.QueryValue(kKey, "PhoneLine"));
  EXPECT_EQ(before, ReadFile(path_));
  EXPECT_EQ(1, FileCount());
  EXPECT_EQ(0, settings.SetValue(kKey, "PhoneLine", "new"));
}

TEST_F(SettingsFileTest, ALinkIsFollowedAndStays) {
  const fs::path real = folder_.File("dotfiles/kestro.conf");
  fs::create_directories(real.parent_path());
  fs::create_directories(path_.parent_path());
  fs::create_symlink("../../dotfiles/hop", path_);
  fs::create_symlink("kestro.conf", real.parent_path() / "hop");
  SettingsFile settings = Open();
  EXPECT_EQ(0, settings.CreateKey(kKey)) << "where the link leads to there is no file yet";
  EXPECT_EQ(0, settings.SetValue(kKey, "PhoneLine", "EXT 101"));
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_TRUE(fs::is_symlink(real.parent_path() / "hop"));
  EXPECT_FALSE(fs::is_symlink(real));
  EXPECT_NE(std::string::npos, ReadFile(real).find("\n[Software\\Kestro\\CTI]\nPhoneLine=EXT 101\n"));
  EXPECT_EQ("EXT 101", Stored("PhoneLine"));
  WriteFile(real, "?");
  Open();
  EXPECT_TRUE(fs::exists(real.string() + ".damaged-20261121-180305"));
  EXPECT_TRUE(fs::is_symlink(path_));
}

TEST_F(SettingsFileTest, TheNextStartRemovesWhatACrashLeft) {
  Write("[Software\\Kestro\\CTI]\nPhoneLine=old\n");
  const fs::path folder = path_.parent_path();
  WriteFile(folder / ".settings.conf.new-a1B2c3", "half");
  WriteFile(folder / ".settings.conf.new-notes", "the user's");
  WriteFile(folder / "settings.conf.new-a1B2c3", "the user's");
  fs::create_symlink(path_, folder / ".settings.conf.new-link00");
  {
    const adapters::FileDescriptor busy(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(0, ::flock(busy.get(), LOCK_EX));
    SettingsFile settings = Open();
    EXPECT_EQ(5, FileCount()) << "somebody else is writing";
    EXPECT_EQ(11, settings.SetValue(kKey, "PhoneLine", "new"));
  }
  EXPECT_EQ("old", Stored("PhoneLine"));
  EXPECT_EQ(4, FileCount());
  EXPECT_FALSE(fs::exists(folder / ".settings.conf.new-a1B2c3"));
}

using adapters::FormatSettings;
using adapters::ParseSettings;
using adapters::SettingsTable;

TEST(SettingsText, AnyTextAndAnyNameComeBack) {
  const std::string names[] = {"Name",        "",     "a=b", "[key]", "#1", " blanks ", "back\\slash",
                               "line\nbreak", "Jméno"};
  std::size_t turn = 0;
  for (const std::string_view text :
       {""sv, " "sv, "  leading and trailing \t"sv, "a=b=c"sv, "[Software]"sv, "# no comment"sv,
        "\"quoted\" 'text'"sv, "line\nbreak\r\n"sv, R"(C:\new\table\x41)"sv, "\\"sv, R"(\\server\share\)"sv,
        "Příliš žluťoučký kůň \xF0\x9F\x93\x9E"sv, "a\0b"sv, "\x01\x1B[31m\x7F"sv, "not UTF-8: \xFF\xC3"sv,
        "\xEF\xBF\xBD"sv, "\xEF\xBB\xBF"sv, "\xE2\x80\xA8\xC2\x85"sv}) {
    const std::string& name = names[turn++ % std::size(names)];
    SettingsTable settings;
    settings.Set(kKey, "Before", "1");
    settings.Set(kKey, name, text);
    settings.Set(kKey, "Text after", "2");
    const std::string file = FormatSettings(settings);
    auto parsed = ParseSettings(file);
    EXPECT_EQ("", parsed.damage) << file;
    ASSERT_NE(nullptr, parsed.settings.Find(kKey, name)) << file;
    EXPECT_EQ(text, *parsed.settings.Find(kKey, name)) << file;
    EXPECT_EQ(file, FormatSettings(parsed.settings));
    EXPECT_EQ(std::string::npos, file.find_first_of(std::string("\0\x01\x1B\r\x7F", 5)));
  }
}

TEST(SettingsText, ToleratesWhatEditorsDo) {
  const auto parsed = ParseSettings(
      "\xEF\xBB\xBF# comment\r\n\r\n  [Software\\Kestro\\CTI]  \r\n\tName = some text \t\r\n"
      "[software\\KESTRO\\cti]\nNAME=last\n  # [comment\n[Other]]\nName=\xC5\xBE");
  EXPECT_EQ("", parsed.damage);
  EXPECT_EQ("last", *parsed.settings.Find(kKey, "Name"));
  EXPECT_EQ("\xC5\xBE", *parsed.settings.Find("Other]", "name"));
}

TEST(SettingsText, DamageIsNoticedAndNamed) {
  const std::pair<std::string, std::vector<std::string>> rows[] = {
      {"line 3: neither a key nor a value nor a comment", {"[K]\nName=1\nName\n"}},
      {"line 1: a value before the first key", {"Name=1\n", "<?xml version=\"1.0\"?>\n"}},
      {"line 1: a key without its closing bracket", {"[K\nName=1\n", "[", "[K] x\n"}},
      {"line 1: not a key", {"[]\n", "[\\K]\n", "[K\\\\L]\n"}},
      {"line 2: an unknown escape",
       {"[K]\nName=\\q\n", "[K]\nName=\\\n", "[K]\nName=\\x4\n", "[K]\nName=\\x+1\n", "[K]\nName=\\x4g\n"}},
      {"line 2: not a name", {"[K]\nNa\\xFFme=1\n"}},
      {"line 2: a control character or no UTF-8",
       {"[K]\nName=\xFF\n", std::string("[K]\nName=1\0\n", 12), "[K]\nName=a\rb\n"}},
      {"line 1: a control character or no UTF-8", {"# \xC0\xAF\n", std::string(4096, '\0')}}};
  for (const auto& [damage, texts] : rows) {
    for (const auto& text : texts) {
      const auto parsed = ParseSettings(text);
      EXPECT_EQ(damage, parsed.damage);
      EXPECT_TRUE(parsed.settings.keys().empty()) << text;
    }
  }
}

TEST(SettingsTable, KeysHaveTheirParents) {
  SettingsTable settings;
  settings.AddKey(kKey);
  EXPECT_TRUE(settings.HasKey("SOFTWARE\\kestro\\CTI"));
  EXPECT_TRUE(settings.HasKey("Software\\Kestro"));
  EXPECT_FALSE(settings.HasKey("Software\\Kes"));
  EXPECT_FALSE(settings.HasKey("Software\\Kestro\\CTI\\More"));
}

}  // namespace
}  // namespace kestro
