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
