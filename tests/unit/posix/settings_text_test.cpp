#include "adapters/posix/settings_text.h"

#include <gtest/gtest.h>

namespace kestro {
namespace {

using adapters::FormatSettings;
using adapters::ParseSettings;
using adapters::SettingsTable;

constexpr const char* kKey = "Software\\Kestro\\CTI";

TEST(SettingsText, AnyTextAndAnyNameComeBack) {
  const std::string texts[] = {"",
                               " ",
                               "  leading and trailing \t",
                               "a=b=c",
                               "[Software]",
                               "# no comment",
                               "\"quoted\" 'text'",
                               "line\nbreak\r\n",
                               R"(C:\new\table\x41)",
                               "\\",
                               R"(\\server\share\)",
                               "Příliš žluťoučký kůň \xF0\x9F\x93\x9E",
                               std::string("a\0b", 3),
                               "\x01\x1B[31m\x7F",
                               "not UTF-8: \xFF\xC3",
                               "\xEF\xBF\xBD",
                               "\xEF\xBB\xBF",
                               "\xE2\x80\xA8\xC2\x85"};
  const std::string names[] = {"Name",        "",     "a=b", "[key]", "#1", " blanks ", "back\\slash",
                               "line\nbreak", "Jméno"};
  std::size_t turn = 0;
  for (const std::string& text : texts) {
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

TEST(SettingsText, IsReadable) {
  SettingsTable settings;
  settings.Set(kKey, "DatabasePath", R"(\home\jan\CTIDB.mdb)");
  settings.Set(kKey, "LogIntoFile", "1");
  EXPECT_NE(std::string::npos, FormatSettings(settings).find(
                                   "\n[Software\\Kestro\\CTI]\nDatabasePath=\\\\home\\\\jan\\\\CTIDB.mdb\n"
                                   "LogIntoFile=1\n"));
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
  const std::pair<std::string, std::string> rows[] = {
      {"[K]\nName=1\nName\n", "line 3: neither a key nor a value nor a comment"},
      {"Name=1\n", "line 1: a value before the first key"},
      {"[K\nName=1\n", "line 1: a key without its closing bracket"},
      {"[", "line 1: a key without its closing bracket"},
      {"[]\n", "line 1: not a key"},
      {"[\\K]\n", "line 1: not a key"},
      {"[K\\\\L]\n", "line 1: not a key"},
      {"[K] x\n", "line 1: a key without its closing bracket"},
      {"[K]\nName=\\q\n", "line 2: an unknown escape"},
      {"[K]\nName=\\\n", "line 2: an unknown escape"},
      {"[K]\nName=\\x4\n", "line 2: an unknown escape"},
      {"[K]\nName=\\x+1\n", "line 2: an unknown escape"},
      {"[K]\nName=\\x4g\n", "line 2: an unknown escape"},
      {"[K]\nNa\\xFFme=1\n", "line 2: not a name"},
      {"[K]\nName=\xFF\n", "line 2: a control character or no UTF-8"},
      {"# \xC0\xAF\n", "line 1: a control character or no UTF-8"},
      {std::string("[K]\nName=1\0\n", 12), "line 2: a control character or no UTF-8"},
      {std::string(4096, '\0'), "line 1: a control character or no UTF-8"},
      {"[K]\nName=a\rb\n", "line 2: a control character or no UTF-8"},
      {"<?xml version=\"1.0\"?>\n", "line 1: a value before the first key"}};
  for (const auto& [text, damage] : rows) {
    const auto parsed = ParseSettings(text);
    EXPECT_EQ(damage, parsed.damage);
    EXPECT_TRUE(parsed.settings.keys().empty()) << text;
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
