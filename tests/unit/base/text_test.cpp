#include "base/text.h"

#include <gtest/gtest.h>

#include "support/error_number.h"

namespace kestro::base {
namespace {

TEST(TextTest, CutsByCharactersAndNeverSplitsOne) {
  EXPECT_EQ(FirstCharacters("Dvořák", 4), "Dvoř");
  EXPECT_EQ(FirstCharacters("a\xF0\x9F\x98\x80z", 2), "a\xF0\x9F\x98\x80");
  EXPECT_EQ(FirstCharacters("e\xCC\x81x", 2), "e\xCC\x81");
  EXPECT_EQ(FirstCharacters("ab", 9), "ab");
  EXPECT_EQ(FirstCharacters("ab", 0), "");
}

TEST(TextTest, AMalformedByteIsOneCharacter) {
  for (const std::string_view text :
       {"\x80", "\xC3", "\xC0\x80", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    EXPECT_EQ(CharacterCount(text), text.size()) << Hex(static_cast<unsigned char>(text[0]));
    EXPECT_EQ(FoldCase(text), text);
    for (std::size_t before = 0; before < 20; ++before) {
      EXPECT_FALSE(IsUtf8(std::string(before, 'a').append(text).append("bcdefghi"))) << before;
    }
  }
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("12345678901234567 Říha \xEF\xBF\xBD \xEF\xBB\xBF \xF0\x9F\x98\x80"));
}

TEST(TextTest, FoldsAllLetters) {
  EXPECT_EQ(FoldCase("NOVÁK Říha ΩΣ Я"), FoldCase("novák říha ωσ я"));
  EXPECT_EQ(UpperCase("Panasonic kx-tda ž\0x"), "PANASONIC KX-TDA Ž");
  EXPECT_EQ(UpperCase(std::string_view("a\0b", 3)), std::string_view("A\0B", 3));
  EXPECT_TRUE(EqualIgnoringCase("EXT 101", "ext 101"));
  EXPECT_FALSE(EqualIgnoringCase("EXT 101", "EXT 1O1"));
}

TEST(TextTest, TrimsSpacesOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\t a\t"), "\t a\t");
  EXPECT_EQ(Trim("   "), "");
}

TEST(TextTest, WholeNumbers) {
  const std::pair<std::string_view, std::int32_t> numbers[] = {
      {" 021 ", 21}, {"-5", -5}, {"+5", 5}, {"2147483647", 2147483647}};
  for (const auto& [text, value] : numbers) {
    EXPECT_EQ(ToInt32(text), value) << text;
    EXPECT_EQ(ParseInt32(text), value) << text;
  }
  const std::pair<std::int32_t, std::vector<std::string_view>> errors[] = {
      {6, {"2147483648", "-2147483649"}}, {13, {"", "  ", "1 2", "12a", "+-5", "0x10", "1.5"}}};
  for (const auto& [error, texts] : errors) {
    for (const auto text : texts) {
      EXPECT_EQ(test::ErrorNumberOf([text] { return ToInt32(text); }), error) << text;
      EXPECT_EQ(ParseInt32(text), std::nullopt) << text;
    }
  }
}

TEST(TextTest, ReplaceAllGoesFromTheLeftInOnePass) {
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("a/b/", "/", "\\"), "a\\b\\");
  EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

}  // namespace
}  // namespace kestro::base
