#include "core/procedure_frame.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace kestro::core {
namespace {

using base::RuntimeError;
using ::testing::ElementsAre;

class ProcedureFrameTest : public ::testing::Test {
 protected:
  test::LogCapture capture;
  LogModule log{capture};
  ProcedureFrame outer{log, "KESTROCTI.Functions", Spelling::kFullStop};
  ProcedureFrame inner{log, "KESTROCTI.CVSParser", Spelling::kBare};
};

TEST_F(ProcedureFrameTest, WritesEntryAndExitOnceOnEveryNormalWayOut) {
  const auto early = [&](bool leave) {
    return outer("Early", [&] {
      if (leave) return 1;
      return 2;
    });
  };
  EXPECT_EQ(early(true), 1);
  EXPECT_EQ(early(false), 2);
  inner("Bare", [] {});
  outer.With(Spelling::kBare, "Mixed", [] {});
  EXPECT_THAT(
      capture.lines,
      ElementsAre(
          "KESTROCTI.Functions.Early | Method started.", "KESTROCTI.Functions.Early | Method finished.",
          "KESTROCTI.Functions.Early | Method started.", "KESTROCTI.Functions.Early | Method finished.",
          "KESTROCTI.CVSParser.Bare | Method started", "KESTROCTI.CVSParser.Bare | Method finished",
          "KESTROCTI.Functions.Mixed | Method started", "KESTROCTI.Functions.Mixed | Method finished"));
}

TEST_F(ProcedureFrameTest, AnErrorThreeProceduresDeepGrowsItsChainAndWritesNoExitLine) {
  const int answer = outer.Outermost(
      "Third",
      [&] {
        return outer("Second", [&]() -> int {
          return inner("First", []() -> int { base::RaiseSubscriptOutOfRange(); });
        });
      },
      [](const RuntimeError& error) { return static_cast<int>(error.number()); });
  EXPECT_EQ(answer, 9);
  const std::string first = "KESTROCTI.CVSParser.First::";
  const std::string second = "KESTROCTI.Functions.Second::" + first;
  const std::string third = "KESTROCTI.Functions.Third::" + second;
  const std::string what = " | Subscript out of range";
  EXPECT_THAT(capture.lines,
              ElementsAre("KESTROCTI.Functions.Third | Method started.",
                          "KESTROCTI.Functions.Second | Method started.",
                          "KESTROCTI.CVSParser.First | Method started", "ERROR 9 " + first + what,
                          "ERROR 9 " + second + what, "ERROR 9 " + third + what));
}

TEST_F(ProcedureFrameTest, AGivenSourceEndsTheChain) {
  EXPECT_THROW(inner("Raise", [] { throw RuntimeError(-2147483576, "Can not open the line!", "Line Open"); }),
               RuntimeError);
  EXPECT_EQ(capture.lines.back(),
            "ERROR -2147483576 KESTROCTI.CVSParser.Raise::Line Open | Can not open the line!");
}

TEST_F(ProcedureFrameTest, ForeignExceptionsBecomeRuntimeErrorsAtTheInnermostFrame) {
  const auto number_of = [&](auto thrown) {
    try {
      inner("Throw", [&] { throw thrown; });
    } catch (const RuntimeError& error) {
      return error.number();
    }
    return 0;
  };
  EXPECT_EQ(number_of(std::out_of_range("x")), 9);
  EXPECT_EQ(number_of(std::overflow_error("x")), 6);
  EXPECT_EQ(number_of(std::bad_alloc()), 7);
  EXPECT_EQ(number_of(std::logic_error("x")), 51);
}

TEST_F(ProcedureFrameTest, TheEndOfTheProcessIsNoError) {
  EXPECT_THROW(outer.Outermost("End", [] { throw base::ProcessEnded(); }), base::ProcessEnded);
  EXPECT_THAT(capture.lines, ElementsAre("KESTROCTI.Functions.End | Method started."));
}

TEST_F(ProcedureFrameTest, AFailingLogIsAnErrorOfTheProcedureThatAsked) {
  for (const int entry : {1, 2}) {
    capture.lines.clear();
    capture.refuse_in = entry;
    EXPECT_THROW(outer("Work", [] {}), RuntimeError);
    EXPECT_EQ(capture.lines.back(), "ERROR 75 KESTROCTI.Functions.Work:: | Path/File access error");
  }
}

}  // namespace
}  // namespace kestro::core
