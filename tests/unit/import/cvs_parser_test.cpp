#include "import/cvs_parser.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <regex>
#include <vector>

#include <gtest/gtest.h>

#include "import/line_reader.h"
#include "support/log_capture.h"
#include "unit/support/text_file.h"

namespace kestro::import {
namespace {

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

class CVSParserTest : public testing::Test {
 protected:
  std::vector<std::string> Fields(std::string_view line) {
    std::vector<std::string_view> fields;
    const auto count = parser_.ParseLine(line, fields);
    if (count == 0) return {};
    EXPECT_EQ(static_cast<std::size_t>(count), fields.size());
    return {fields.begin(), fields.end()};
  }

  test::LogCapture capture_;
  core::LogModule log_{capture_};
  CVSParser parser_{log_};
};

TEST_F(CVSParserTest, AFieldOfOneQuoteIsLoggedAndSpoilsTheLine) {
  for (const char* line : {"\"", "a;\";b", "a; \" ", "\"x;\";y;\""}) {
    capture_.lines.clear();
    EXPECT_EQ(Texts(), Fields(line)) << line;
    const Texts log = {"KESTROCTI.CVSParser.ParseLine | Method started.",
                       "ERROR 5 KESTROCTI.CVSParser.ParseLine:: | Invalid procedure call or argument"};
    EXPECT_EQ(log, capture_.lines);
  }
}

/// The fields as a regular-expression engine finds them; nothing where a field is a single quote.
Texts FieldsOfExpression(const std::string& line) {
  static const std::regex kPattern(R"((\s*"[^"]*"\s*;)|(\s*[^;]*\s*;))",
                                   std::regex::ECMAScript | std::regex::icase);
  const std::string extended = line + ";";
  Texts fields;
  for (std::sregex_iterator match(extended.begin(), extended.end(), kPattern), end; match != end; ++match) {
    std::string field = match->str();
    field.pop_back();
    field.erase(0, std::min(field.find_first_not_of(' '), field.size()));
    field.erase(field.find_last_not_of(' ') + 1);
    if (field == "\"") return {};
    if (field.size() > 1 && field.front() == '"' && field.back() == '"')
      field = field.substr(1, field.size() - 2);
    fields.push_back(field);
  }
  return fields;
}

TEST_F(CVSParserTest, AgreesWithTheExpressionOnGeneratedLines) {
  constexpr int kLines = 60'000;
  const std::string_view parts[] = {"\"",     "\"",     ";",      ";",    " ",    " ",
                                    "\t",     "a",      "b\"",    "\";",  "; \"", "\v\f\r\n",
                                    "\u00A0", "\u2028", "\uFEFF", "\0"sv, "\xFF"};
  std::mt19937 random(20);
  for (int i = 0; i < kLines; ++i) {
    std::string line;
    for (auto length = random() % 24; length > 0; --length) line += parts[random() % std::size(parts)];
    ASSERT_EQ(FieldsOfExpression(line), Fields(line)) << testing::PrintToString(line);
  }
}

TEST_F(CVSParserTest, TakesLinearTimeOnHostileLines) {
  constexpr std::size_t kBytes = 200'000;
  const auto repeated = [](std::string_view part) {
    std::string line;
    while (line.size() < kBytes) line += part;
    return line;
  };
  const std::string_view parts[] = {"\"", " ", ";", "\t;", "\"a;", "\";\" x", " \" ; ", "\" \"", "\"; \"x"};
  std::vector<std::string_view> fields;
  for (const auto first : parts) {
    for (const auto second : parts) {
      const std::string line = repeated(first) + "\"" + repeated(second) + "x";
      const auto start = std::chrono::steady_clock::now();
      static_cast<void>(parser_.ParseLine(line, fields));
      // A quadratic scan takes many times as long.
      EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << first << second;
    }
  }
}

/// The lines; "<too long>" for one that is.
std::vector<std::string> Lines(const std::string& text, std::size_t block) {
  LineReader reader(std::make_unique<test_support::TextFile>(text, block));
  std::vector<std::string> lines;
  while (true) {
    switch (reader.Next()) {
      case LineReader::Step::kLine:
        lines.emplace_back(reader.line());
        break;
      case LineReader::Step::kTooLong:
        lines.emplace_back("<too long>");
        break;
      case LineReader::Step::kMore:
        break;
      case LineReader::Step::kEnd:
        EXPECT_EQ(LineReader::Step::kEnd, reader.Next());
        return lines;
    }
  }
}

TEST(LineReader, EndsLinesInEveryWay) {
  const std::pair<std::string, Texts> cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"\n", {""}},
      {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
      {"a\r\r\nb\n\nc\r\n\r\n", {"a", "", "b", "", "c", ""}},
      {"\n\r", {"", ""}},
      {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
  };
  for (const auto& [text, lines] : cases) {
    for (const std::size_t block : {1U, 2U, 3U, 100U}) {
      EXPECT_EQ(lines, Lines(text, block)) << testing::PrintToString(text) << " in blocks of " << block;
    }
  }
}

TEST(LineReader, LeavesOutWhatALongLineHolds) {
  const std::string longest(LineReader::kMostLineBytes, 'x');
  constexpr std::size_t kAnyBlock = std::size_t{1} << 20U;
  EXPECT_EQ((Texts{"a", longest, "b"}), Lines("a\n" + longest + "\nb", kAnyBlock));
  EXPECT_EQ((Texts{"a", "<too long>", "b"}), Lines("a\r\n" + longest + "x\r\nb\r\n", kAnyBlock));
  EXPECT_EQ((Texts{"<too long>"}), Lines(longest + longest, kAnyBlock));
}

}  // namespace
}  // namespace kestro::import
