#include "scenario/recording_shell.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_clipboard.h"
#include "scenario/recording_dialling.h"

namespace kestro::scenario {
namespace {

TEST(RecordingShell, WhatLeavesTheApplicationIsWrittenDown) {
  std::vector<std::string> lines;
  Transcript transcript([&](std::string_view line) { lines.emplace_back(line); });
  RecordingShellExecute shell(transcript);
  EXPECT_TRUE(shell.Open("C:\\Program\\Help\\index.html"));
  EXPECT_TRUE(shell.Open("https://kestro.example/"));
  adapters::HeadlessClipboard inner;
  RecordingClipboard clipboard(inner, transcript);
  clipboard.SetText("one\r\n\"two\"");
  EXPECT_EQ("one\r\n\"two\"", inner.text());
  const std::vector<std::string> expected = {R"(open "C:\Program\Help\index.html")",
                                             R"(open "https://kestro.example/")",
                                             R"(clipboard "one\r\n\"two\"")"};
  EXPECT_EQ(expected, lines);
}

TEST(RecordingShell, TheScriptsWordsForTheDialObject) {
  EXPECT_EQ(DialObject::kMissing, DialObjectOfWord("missing"));
  EXPECT_EQ(DialObject::kFails, DialObjectOfWord("fails"));
  EXPECT_EQ(DialObject::kWorks, DialObjectOfWord("works"));
}

}  // namespace
}  // namespace kestro::scenario
