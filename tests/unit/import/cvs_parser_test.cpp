#include "import/cvs_parser.h"

#include <chrono>
#include <random>
#include <regex>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace kestro::import {
namespace {

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

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

TEST_F(CVSParserTest, SplitsAsTheExpressionDoes) {
  const std::pair<const char*, Texts> cases[] = {
      {"a;b;c", {"a", "b", "c"}},
      {"a;;c", {"a", "", "c"}},
      {"a;", {"a", ""}},
      {"", {""}},
      {"  a ;  b b  ; ", {"a", "b b", ""}},
      {R"("x;y";z)", {"x;y", "z"}},
      {R"( "  x " ;z)", {"  x ", "z"}},
      {R"(a;"x;y")", {"a", "x;y"}},
      {R"(a;"x;y"   )", {"a", "x;y"}},
      {R"("x;y)", {"\"x", "y"}},              // opened and not closed
      {R"("x;y"z;w)", {"\"x", "y\"z", "w"}},  // something behind the closing quote
      {R"("a"b";c)", {"a\"b", "c"}},          // the enclosing ones go, the inner one stays
      {R"("";"";a)", {"", "", "a"}},
      {"\t\"x;y\"\t;z", {"\t\"x;y\"\t", "z"}},                     // white space that is no space stays
      {"\xC2\xA0\"x;y\";z", {"\xC2\xA0\"x", "y\"", "z"}},          // a no-break space is a letter
      {"\"x;y\"\xE2\x80\x83;z", {"\"x", "y\"\xE2\x80\x83", "z"}},  // so is an em space
  };
  for (const auto& [line, fields] : cases) {
    EXPECT_EQ(fields, Fields(line)) << line;
  }
}

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
  const std::string_view parts[] = {"\"",
                                    "\"",
                                    ";",
                                    ";",
                                    " ",
                                    " ",
                                    "\t",
                                    "a",
                                    "b\"",
                                    "\";",
                                    "; \"",
                                    "\v\f\r\n",
                                    "\xC2\xA0",
                                    "\xE2\x80\xA8",
                                    "\xEF\xBB\xBF",
                                    "\0"sv,
                                    "\xFF"};
  std::mt19937 random(20);
  for (int i = 0; i < kLines; ++i) {
    std::string line;
    for (auto length = random() % 24; length > 0; --length) line += parts[random() % std::size(parts)];
    ASSERT_EQ(FieldsOfExpression(line), Fields(line)) << testing::PrintToString(line);
  }
}

TEST_F(CVSParserTest, TakesLinearTimeOnHostileLines) {
  constexpr std::size_t kBytes = 1'000'000;
  const auto repeated = [](std::string_view part) {
    std::string line;
    while (line.size() < kBytes) line += part;
    return line;
  };
  const std::string lines[] = {repeated("\""),
                               repeated(" "),
                               repeated(";"),
                               repeated("\"a;"),
                               repeated("\";\" x"),
                               repeated(" \" ; "),
                               "\"" + repeated(";"),
                               "\"" + repeated(" "),
                               "\"" + repeated(";") + "\"" + repeated(" ") + "x",
                               repeated("\t") + "\"" + repeated("\t;"),
                               repeated("\" \""),
                               repeated("\"; \"x")};
  std::vector<std::string_view> fields;
  for (const auto& line : lines) {
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(parser_.ParseLine(line, fields));
    // A quadratic scan of a megabyte takes minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << line.substr(0, 20);
  }
}

}  // namespace
}  // namespace kestro::import
