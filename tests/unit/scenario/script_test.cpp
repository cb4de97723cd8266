#include "scenario/script.h"

#include <string>

#include <gtest/gtest.h>

#include "scenario/quoting.h"
#include "scenario/script_line.h"
#include "scenario/transcript.h"

namespace kestro::scenario {
namespace {

/// "LINE: REASON" of the error that the script raises.
std::string ErrorOf(std::string_view script) {
  try {
    static_cast<void>(ParseScript(script));
  } catch (const ScriptError& error) {
    return std::to_string(error.line()) + ": " + error.what();
  }
  return "no error";
}

TEST(Quoting, WritesWhatScriptsRead) {
  const std::string text = "a\"b\\c\r\n\t\x01\x7f\xC5\x99";
  EXPECT_EQ(Quoted(text), "\"a\\\"b\\\\c\\r\\n\\t\\x01\\x7f\xC5\x99\"");
  EXPECT_EQ(SplitLine(Quoted(text)).words.at(0).text, text);
  EXPECT_EQ(OneLine("a\r\n\"b\""), "a\\r\\n\"b\"");
  EXPECT_EQ(HandleText(0), "0x0");
  EXPECT_EQ(HandleText(0x1aF), "0x1af");
}

TEST(Transcript, KeepsItsTail) {
  Transcript transcript([](std::string_view) {});
  for (int number = 1; number <= 25; ++number) transcript.Add(std::to_string(number));
  ASSERT_EQ(transcript.Tail().size(), Transcript::kTailLength);
  EXPECT_EQ(transcript.Tail().front(), "6");
}

TEST(Script, ReadsNestedBlocks) {
  const auto actions = ParseScript("during\n during\n start\n end\n dump call\nend\ndump flags\n");
  ASSERT_EQ(actions.size(), 2U);
  ASSERT_EQ(actions[0].block.size(), 2U);
  EXPECT_EQ(actions[0].end_line, 6);
  EXPECT_EQ(actions[0].block[0].block.at(0).kind, ActionKind::kStart);
  EXPECT_EQ(actions[0].block[1].kind, ActionKind::kDumpCall);
}

TEST(Script, RefusesWhatItCannotRead) {
  const struct {
    std::string script;
    std::string error;
  } cases[] = {
      {"start\nfoo 1", "2: unknown action \"foo\""},
      {"\"start\"", "1: an action begins with its name"},
      {"start now", "1: expected: start"},
      {"device EXT", "1: expected: device TEXT [provider TEXT] [states NUMBER]"},
      {"device \"E\" states 1 states 2", "1: expected: device TEXT [provider TEXT] [states NUMBER]"},
      {"device \"E\" states", "1: expected: device TEXT [provider TEXT] [states NUMBER]"},
      {"reply 1 99999999999", "1: expected: reply NUMBER NUMBER"},
      {"reply 1 -2147483649", "1: expected: reply NUMBER NUMBER"},
      {"reply 1 0x", "1: expected: reply NUMBER NUMBER"},
      {"reply 1 0x-1", "1: expected: reply NUMBER NUMBER"},
      {"reply 1 1x", "1: expected: reply NUMBER NUMBER"},
      {"tray up", "1: expected: tray left|right|double|balloon"},
      {"file name", "1: expected: file cancel | file TEXT"},
      {"contact", "1: expected: contact PAIRS"},
      {"contact Name=\"a\" Name=\"b\"", "1: expected: contact PAIRS"},
      {"expect", "1: expected: expect REST"},
      {"setting A \"b", "1: a text without its closing quote"},
      {"setting A \"b\\", "1: an unknown escape: there are \\\" \\\\ \\r \\n \\t \\xHH"},
      {"setting A \"\\q\"", "1: an unknown escape: there are \\\" \\\\ \\r \\n \\t \\xHH"},
      {"setting A \"\\x1\"", "1: \\x without two hexadecimal digits"},
      {"setting A \"\\xg0\"", "1: \\x without two hexadecimal digits"},
      {"setting A \"b\"c", "1: no blank behind a text"},
      {"setting A\"b\"", "1: a quote inside a word"},
      {"setting A \"\xC3\x28\"", "1: malformed UTF-8"},
      {"expect \xFF", "1: malformed UTF-8"},
      {std::string("start\0", 6), "1: a control character"},
      {"during\nstart", "1: \"during\" without \"end\""},
      {"start\nend\n", "2: \"end\" without \"during\""},
      {"# " + std::string(kMaximumLineLength, 'x'), "1: the line is too long"},
  };
  for (const auto& test : cases) EXPECT_EQ(ErrorOf(test.script), test.error) << test.script;
  std::string deep;
  for (int depth = 0; depth < 100000; ++depth) deep += "during\n";
  EXPECT_EQ(ErrorOf(deep), "17: too many nested blocks");
}

}  // namespace
}  // namespace kestro::scenario
