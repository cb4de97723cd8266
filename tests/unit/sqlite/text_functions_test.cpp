#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/text_matcher.h"
#include "adapters/sqlite/text_order.h"
#include "base/text.h"
#include "generated/case_tables.h"

namespace kestro::adapters {
namespace {

using namespace std::string_view_literals;

// All letters are compared further below.
TEST(TextMatcher, IgnoresLetterCaseAndKnowsNoWildcards) {
  const std::pair<std::string_view, std::string_view> found[] = {{"Jan Novák", "NOVÁK"},
                                                                 {"", ""},
                                                                 {"abc", ""},
                                                                 {"50% sleva", "%"},
                                                                 {"a_b", "a_b"},
                                                                 {"O'Brien \"Bob\"", "'brien \""},
                                                                 {"a\0b"sv, "\0B"sv},
                                                                 {"a\xFFZ", "\xFFz"},
                                                                 {"end\xC5", "d\xC5"}};
  for (const auto& [text, part] : found) {
    EXPECT_TRUE(TextMatcher(part).FoundIn(text)) << '"' << part << "\" in \"" << text << '"';
  }
  // An accent is not a letter case; [ and { differ in the bit that tells the cases of letters apart.
  const std::pair<std::string_view, std::string_view> not_found[] = {
      {"Jan Novák", "novak"}, {"\u0160koda", "s"}, {"aab", "aaab"}, {"", "a"},  {"50 sleva", "%"},
      {"axb", "a_b"},         {"a\0b"sv, "ab"},    {"[", "{"},      {"@", "`"}, {"a\xFEz", "\xFFz"},
      {"\uFFFD", "\xFF"}};
  for (const auto& [text, part] : not_found) {
    EXPECT_FALSE(TextMatcher(part).FoundIn(text)) << '"' << part << "\" in \"" << text << '"';
  }
}

std::string ToUtf16(std::string_view text) {
  std::string stored;
  const auto append = [&stored](char32_t unit) {
    stored += static_cast<char>(unit);
    stored += static_cast<char>(unit >> 8U);
  };
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = base::NextCharacter(text, position);
    if (character >= 0x10000) append(0xD800 + ((character - 0x10000) >> 10U));
    append(character >= 0x10000 ? 0xDC00 + (character & 0x3FFU) : character);
  }
  return stored;
}

/// Nothing when the text has other characters.
std::optional<std::string> ToLatin1(std::string_view text) {
  std::string stored;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = base::NextCharacter(text, position);
    if (character > 0xFF) return std::nullopt;
    stored += static_cast<char>(character);
  }
  return stored;
}

TEST(TextMatcher, ReadsUtf16AsItIsStored) {
  const std::tuple<std::string_view, std::string_view, bool> cases[] = {
      {"a\0\0b"sv, "\0"sv, false},                                    // no unit, though two zeros
      {"\x59\x01"sv, "y", false},                                     // the low byte of U+0159
      {"\x00\x41\x42\x00"sv, "ab", false}, {"a\0b\0c"sv, "b", true},  // an odd last byte
      {"a\0b\0c"sv, "c", false},           {"\x01\xD8\x28\x00"sv, "\uFFFD(", true},  // half a pair
      {"\x00\xDC"sv, "\uFFFD", true},      {"\x00\xDC\x00\xDC"sv, "\uFFFD\uFFFD", true},
      {"x\0\x01\xD8"sv, "x\uFFFD", true},
  };
  for (const auto& [text, part, found] : cases) {
    EXPECT_EQ(TextMatcher(part).FoundInUtf16(text), found) << part << " in " << text;
  }
}

TEST(TextMatcher, AgreesWithTheCaseFoldingOfEveryLetter) {
  for (const auto& [from, to] : base::CaseFoldPairs()) {
    std::string text = "a";
    base::AppendCharacter(text, from);
    std::string part;
    base::AppendCharacter(part, to);
    EXPECT_TRUE(TextMatcher(part).FoundIn(text)) << base::Hex(from);
    EXPECT_TRUE(TextMatcher(part).FoundInUtf16(ToUtf16(text))) << base::Hex(from);
    const auto latin1 = ToLatin1(text);
    EXPECT_TRUE(!latin1 || TextMatcher(part).FoundInLatin1(*latin1)) << base::Hex(from);
    EXPECT_TRUE(TextMatcher(text).FoundIn("b" + std::string("A") + part)) << base::Hex(from);
  }
}

TEST(TextMatcher, AgreesWithASearchInFoldedText) {
  std::mt19937 random(7);
  const std::string_view pieces[] = {"a", "A", "k", "S", "z",      "ß",      "é",
                                     "É", "ř", "Ř", "Z", "\u212A", "\u017F", "\U00010400"};
  const auto make = [&](std::size_t length, std::size_t kinds) {
    std::string text;
    while (length-- > 0) text += pieces[random() % kinds];
    return text;
  };
  int found = 0;
  int found_in_latin1 = 0;
  for (int i = 0; i < 30'000; ++i) {
    // Every third text has Latin-1 letters only; some are longer than what is looked at in one step.
    const auto text = make(random() % (i % 2 == 0 ? 12 : 70), i % 3 == 0 ? 8 : std::size(pieces));
    const auto part = make(1 + random() % 3, std::size(pieces));
    const bool expected = base::FoldCase(text).find(base::FoldCase(part)) != std::string::npos;
    const TextMatcher matcher(part);
    ASSERT_EQ(matcher.FoundIn(text), expected) << part << " in " << text;
    ASSERT_EQ(matcher.FoundInUtf16(ToUtf16(text)), expected) << part << " in " << text;
    const auto latin1 = ToLatin1(text);
    ASSERT_TRUE(!latin1 || matcher.FoundInLatin1(*latin1) == expected) << part << " in " << text;
    found += expected ? 1 : 0;
    found_in_latin1 += expected && latin1 ? 1 : 0;
  }
  EXPECT_GT(found, 1000);
  EXPECT_GT(found_in_latin1, 1000);
}

TEST(TextOrder, IsAlphabetical) {
  // "á" alone comes right behind "a", "áb" right behind "ab": the letters count before the accents.
  const std::vector<std::string_view> expected = {
      "",       "1",     "a",     "á",     "ab",        "áb",      "az",   "b",    "Čáp",   "čapek",
      "Dvořák", "Novak", "novák", "Novák", "Novák Jan", "Řeháček", "říha", "Říha", "Šimek", "žofie"};
  auto sorted = expected;
  std::mt19937 random(3);
  std::ranges::shuffle(sorted, random);
  std::ranges::sort(sorted, [](auto left, auto right) { return CompareTextOrder(left, right) < 0; });
  EXPECT_EQ(sorted, expected);
}

TEST(TextOrder, IsATotalOrder) {
  std::mt19937 random(11);
  const std::string_view pieces[] = {"a",    "A",      "á", "Á", "ä", "b",   "\xFF",
                                     "\xC5", "\uFFFD", "ß", "s", "ſ", "\0"sv};
  std::vector<std::string> texts;
  for (int i = 0; i < 60; ++i) {
    std::string text;
    for (auto length = random() % 4; length > 0; --length) text += pieces[random() % std::size(pieces)];
    texts.push_back(text);
  }
  std::ranges::stable_sort(texts, [](auto& left, auto& right) { return CompareTextOrder(left, right) < 0; });
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < texts.size(); ++j) {
      const int order = CompareTextOrder(texts[i], texts[j]);
      ASSERT_EQ(order == 0, texts[i] == texts[j]) << texts[i] << " " << texts[j];
      ASSERT_EQ(order < 0, i < j && order != 0) << texts[i] << " " << texts[j];
    }
  }
}

}  // namespace
}  // namespace kestro::adapters
