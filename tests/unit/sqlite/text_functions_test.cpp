#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/text_matcher.h"
#include "adapters/sqlite/text_order.h"
#include "base/text.h"
#include "generated/case_tables.h"

namespace kestro::adapters {
namespace {

using namespace std::string_view_literals;

TEST(TextMatcher, IgnoresLetterCaseAndKnowsNoWildcards) {
  struct Case {
    std::string_view text;
    std::string_view part;
    bool found;
  };
  const Case cases[] = {
      {"Jan Novák", "novák", true},
      {"Jan Novák", "NOVÁK", true},
      {"Jan Novák", "novak", false},  // an accent is not a letter case
      {"Říha", "ŘÍHA", true},
      {"ŘÍHA a syn", "říha", true},
      {"aaab", "AAB", true},
      {"aab", "aaab", false},
      {"", "a", false},
      {"", "", true},
      {"abc", "", true},
      {"50% sleva", "%", true},
      {"50 sleva", "%", false},
      {"a_b", "a_b", true},
      {"axb", "a_b", false},
      {"O'Brien \"Bob\"", "'brien \"", true},
      {"a\0b"sv, "\0B"sv, true},
      {"a\0b"sv, "ab", false},
      {"[", "{", false},  // differ in the bit that tells the cases of letters apart
      {"@", "`", false},
      {"Ωmega Καλημέρα", "ΚΑΛΗΜΈΡΑ", true},
      {"ПРАГА", "прага", true},
      {"\U00010400 Deseret", "\U00010428", true},
      {"Stra\u1E9Ee", "stra\u00DFe", true},
      {"x\u017Fy", "SY", true},    // long s
      {"5 \u212Am", "5 K", true},  // Kelvin sign
      {"\u0160koda", "s", false},
      {"a\xFFZ", "\xFFz", true},  // malformed bytes are found as they are
      {"a\xFEz", "\xFFz", false},
      {"\uFFFD", "\xFF", false},
      {"end\xC5", "d\xC5", true},
  };
  for (const auto& [text, part, found] : cases) {
    EXPECT_EQ(TextMatcher(part).FoundIn(text), found) << '"' << part << "\" in \"" << text << '"';
  }
}

TEST(TextMatcher, AgreesWithTheCaseFoldingOfEveryLetter) {
  for (const auto& [from, to] : base::CaseFoldPairs()) {
    std::string text = "a";
    base::AppendCharacter(text, from);
    std::string part;
    base::AppendCharacter(part, to);
    EXPECT_TRUE(TextMatcher(part).FoundIn(text)) << base::Hex(from);
    EXPECT_TRUE(TextMatcher(text).FoundIn("b" + std::string("A") + part)) << base::Hex(from);
  }
}

TEST(TextMatcher, AgreesWithASearchInFoldedText) {
  std::mt19937 random(7);
  const std::string_view pieces[] = {"a",      "A",      "k", "S", "ř",         "Ř",
                                     "\u212A", "\u017F", "z", "ß", "\U00010400"};
  const auto make = [&](std::size_t length) {
    std::string text;
    while (length-- > 0) text += pieces[random() % std::size(pieces)];
    return text;
  };
  int found = 0;
  for (int i = 0; i < 20'000; ++i) {
    const auto text = make(random() % 12);
    const auto part = make(1 + random() % 3);
    const bool expected = base::FoldCase(text).find(base::FoldCase(part)) != std::string::npos;
    ASSERT_EQ(TextMatcher(part).FoundIn(text), expected) << part << " in " << text;
    found += expected ? 1 : 0;
  }
  EXPECT_GT(found, 1000);
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
  for (const auto& a : texts) {
    for (const auto& b : texts) {
      const int order = CompareTextOrder(a, b);
      ASSERT_EQ(order == 0, a == b) << a << " " << b;
      ASSERT_EQ(order, -CompareTextOrder(b, a)) << a << " " << b;
      for (const auto& c : texts) {
        if (order <= 0 && CompareTextOrder(b, c) <= 0) {
          ASSERT_LE(CompareTextOrder(a, c), 0) << a << " " << b << " " << c;
        }
      }
    }
  }
}

}  // namespace
}  // namespace kestro::adapters
