#include "scenario/transcript.h"

#include <gtest/gtest.h>

#include "scenario/quoting.h"
#include "scenario/script_line.h"

namespace kestro::scenario {
namespace {

TEST(Quoting, WritesWhatScriptsRead) {
  const std::string text = "a\"b\\c\r\n\t\x01\x7f\xC5\x99";
  EXPECT_EQ(Quoted(text), "\"a\\\"b\\\\c\\r\\n\\t\\x01\\x7f\xC5\x99\"");
  EXPECT_EQ(SplitLine(Quoted(text)).words.at(0).text, text);
  EXPECT_EQ(OneLine("a\r\n\"b\""), "a\\r\\n\"b\"");
  EXPECT_EQ(HandleText(0), "0x0");
  EXPECT_EQ(HandleText(0x1aF), "0x1af");
}

class TranscriptTest : public ::testing::Test {
 protected:
  std::string printed;
  Transcript transcript{[this](std::string_view line) { printed.append(line).append("\n"); }};
};

TEST_F(TranscriptTest, RemembersTheLinesOfTheLastAction) {
  transcript.Begin("first", false);
  transcript.Add("one");
  transcript.Begin("second", false);
  transcript.Add("  two  three");
  transcript.Begin("expect two", true);
  EXPECT_TRUE(transcript.Contains("two  three"));
  EXPECT_FALSE(transcript.Contains("two"));
  EXPECT_TRUE(transcript.ContainsBeginning("two"));
  EXPECT_FALSE(transcript.ContainsBeginning("three"));
  EXPECT_FALSE(transcript.Contains("one"));
  EXPECT_FALSE(transcript.ContainsBeginning(">"));
  EXPECT_EQ(printed, "> first\none\n> second\n  two  three\n> expect two\n");
}

TEST_F(TranscriptTest, AnActionKeepsTheLinesOfTheBlockInsideIt) {
  transcript.Begin("before", false);
  transcript.Add("old");
  transcript.Begin("outer", false);
  transcript.Add("modal");
  transcript.EnterBlock();
  EXPECT_TRUE(transcript.Contains("modal"));
  transcript.Begin("inner", false);
  EXPECT_FALSE(transcript.Contains("modal"));
  transcript.Add("inside");
  transcript.LeaveBlock();
  transcript.Add("closed");
  for (const char* line : {"modal", "inside", "closed"}) EXPECT_TRUE(transcript.Contains(line)) << line;
  EXPECT_FALSE(transcript.Contains("old"));
}

TEST_F(TranscriptTest, KeepsItsTailAndEndsWhenClosed) {
  for (int number = 1; number <= 25; ++number) transcript.Add(std::to_string(number));
  ASSERT_EQ(transcript.Tail().size(), Transcript::kTailLength);
  EXPECT_EQ(transcript.Tail().front(), "6");
  EXPECT_EQ(transcript.Tail().back(), "25");
  transcript.Close();
  transcript.Add("late");
  EXPECT_EQ(transcript.Tail().back(), "25");
  EXPECT_TRUE(printed.ends_with("25\n"));
}

}  // namespace
}  // namespace kestro::scenario
