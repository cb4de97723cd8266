#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "jet/error.h"
#include "jet/index_key.h"
#include "jet/stored_text.h"
#include "jet/text_key.h"

// Texts in their stored forms, and in keys.

namespace kestro::test {
namespace {

using namespace jet;

using Bytes = std::vector<std::uint8_t>;

std::string Decoded(const Bytes& stored) {
  std::string text;
  AppendStoredText(stored, text);
  return text;
}

TEST(StoredText, HasTheShortFormWhenItCan) {
  struct Case {
    const char* what;
    std::string text;
    std::size_t size;   // stored
    std::size_t units;  // of UTF-16
  };
  const std::string umlaut = "\xC3\xBC";
  std::string many;
  for (int i = 0; i < 1024; ++i) many += umlaut;
  const Case cases[] = {
      {"nothing", "", 0, 0},
      {"two characters: not worth it", "ab", 4, 2},
      {"two characters of two bytes", umlaut + umlaut, 4, 2},
      {"three", "abc", 2 + 3, 3},
      {"Latin-1 letters", "M" + umlaut + "ller", 2 + 6, 6},
      {"the last Latin-1 letter", "ab\xC3\xBF", 2 + 3, 3},
      {"the first behind Latin-1", "ab\xC4\x80", 6, 3},
      {"a zero", std::string("a\0bcd", 5), 10, 5},
      {"the first plane", "abc\xE4\xB8\xAD", 8, 4},
      {"a pair of surrogates", "abc\xF0\x9F\x98\x80", 10, 5},
      {"the longest", many, 2 + 1024, 1024},
      {"too long", many + "x", 2050, 1025},
      {"too long, plain letters", std::string(1025, 'x'), 2050, 1025},
  };
  for (const Case& one : cases) {
    Bytes stored{0xAB};
    EXPECT_EQ(AppendTextBytes(one.text, TextForm::kShortestAllowed, stored), one.units) << one.what;
    EXPECT_EQ(stored.size() - 1, one.size) << one.what;
    stored.erase(stored.begin());
    EXPECT_EQ(Decoded(stored), one.text) << one.what;
    Bytes plain;
    EXPECT_EQ(AppendTextBytes(one.text, TextForm::kPlain, plain), one.units) << one.what;
    EXPECT_EQ(plain.size(), 2 * one.units) << one.what;
    EXPECT_EQ(DecodeUtf16(plain), one.text) << one.what;
  }
}

// The forms are read eight bytes at a time where they can be: the odd character at every place.
TEST(StoredText, ReadsAnyCharacterAnywhere) {
  for (std::size_t length = 3; length < 40; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      for (const char* odd : {"\xC3\xA4", "\xC2\x80", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\x7F", "\x01"}) {
        const std::string text = std::string(at, 'a') + odd + std::string(length - at - 1, 'z');
        Bytes stored;
        AppendTextBytes(text, TextForm::kShortestAllowed, stored);
        ASSERT_EQ(Decoded(stored), text) << length << ", " << at;
      }
    }
  }
}

TEST(StoredText, ReadsWhatOthersWrite) {
  struct Case {
    const char* what;
    Bytes stored;
    std::string text;
  };
  const Case cases[] = {
      {"the short form without text", {0xFF, 0xFE}, ""},
      {"two bytes a character in the middle",
       {0xFF, 0xFE, 'a', 0, 0xAC, 0x20, 'b', 0x01, 0, 'c'},
       "a\u20AC\u0162c"},
      {"ending with two bytes a character", {0xFF, 0xFE, 'a', 0, 0xAC, 0x20}, "a\xE2\x82\xAC"},
      {"half a unit at the end", {'a', 0, 'b'}, "a"},
      {"half a pair", {0x3D, 0xD8, 'b', 0}, "\uFFFDb"},
      {"the second half alone", {0x00, 0xDE}, "\xEF\xBF\xBD"},
      {"a pair in the wrong order", {0x00, 0xDE, 0x3D, 0xD8}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
  };
  for (const Case& one : cases) EXPECT_EQ(Decoded(one.stored), one.text) << one.what;
}

TEST(StoredText, TellsItsForm) {
  using Form = StoredText::Form;
  const std::pair<Bytes, Form> cases[] = {{{0xFF, 0xFE, 'a', 0xE9}, Form::kLatin1},
                                          {{0xFF, 0xFE}, Form::kLatin1},
                                          {{0xFF, 0xFE, 'a', 0, 0xAC, 0x20}, Form::kMixed},
                                          {{'a', 0, 0xAC, 0x20}, Form::kUtf16},
                                          {{0xFF}, Form::kUtf16}};
  for (const auto& [stored, form] : cases) {
    const StoredText text = LookAtStoredText(stored);
    EXPECT_EQ(text.form, form) << Decoded(stored);
    EXPECT_EQ(text.bytes.size(), stored.size() - (form == Form::kUtf16 ? 0 : 2)) << Decoded(stored);
  }
}

TEST(StoredText, RefusesWhatIsNoText) {
  const char* const texts[] = {"abc\xC3",          "abc\xC3(",        "abc\x80",     "abc\xC0\x80",
                               "abc\xE0\x80\x80",  "abc\xED\xA0\x80", "abc\xE2\x82", "abc\xF4\x90\x80\x80",
                               "abc\xF0\x80\x80x", "\uFEFFa",         "abc\xFF"};
  for (const char* text : texts) {
    for (const TextForm form : {TextForm::kPlain, TextForm::kShortestAllowed}) {
      Bytes stored;
      EXPECT_THROW((void)AppendTextBytes(text, form, stored), Error) << text;
    }
  }
}

Bytes KeyOf(const std::string& text) {
  IndexKey key;
  EXPECT_TRUE(AppendTextKey(text, key)) << text;
  return {key.bytes().begin(), key.bytes().end()};
}

TEST(TextKey, PutsTextsInOrder) {
  const char* const ascending[] = {"",     " a",      "_",      ".",  "0",      "1",   "10",
                                   "9",    "a",       "a b",    "aa", "ab",     "abc", "abd",
                                   "b",    "B\u00E9", "bf",     "e",  "\u00E9", "ef",  "m\u00FCller",
                                   "mulm", "o",       "\u00F6", "oe", "z",      "zz"};
  for (std::size_t i = 0; i + 1 < std::size(ascending); ++i) {
    if (std::string(ascending[i]) == "_") continue;  // marks: only their place before the digits is certain
    EXPECT_LT(KeyOf(ascending[i]), KeyOf(ascending[i + 1])) << ascending[i] << " and " << ascending[i + 1];
  }
}

// A key knows no case: of ASCII letters nor of the others (U+00E0 to U+00FE, but for the division sign).
TEST(TextKey, TakesBothCasesForEqual) {
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    EXPECT_EQ(KeyOf(std::string(3, letter)), KeyOf(std::string(3, static_cast<char>(letter - 0x20))));
  }
  for (int low = 0xA0; low <= 0xBE; ++low) {
    if (low == 0xB7) continue;
    const std::string small = {'\xC3', static_cast<char>(low)};
    const std::string large = {'\xC3', static_cast<char>(low - 0x20)};
    EXPECT_EQ(KeyOf(small + "x"), KeyOf(large + "X")) << low;
  }
  EXPECT_EQ(KeyOf("end   "), KeyOf("end"));
  EXPECT_EQ(KeyOf(std::string(255, 'a') + "b"), KeyOf(std::string(255, 'a') + "c"));
}

}  // namespace
}  // namespace kestro::test
