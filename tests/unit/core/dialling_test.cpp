#include "core/dialling.h"

#include <vector>

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "scenario/recording_dialling.h"

namespace kestro {
namespace {

using scenario::DialObject;

class Dialling : public testing::Test {
 protected:
  /// 0, or the number of the error raised.
  std::int32_t ErrorOf(std::string_view number) {
    try {
      return dialling_.Dial(number);
    } catch (const base::RuntimeError& error) {
      return error.number();
    }
  }

  std::vector<std::string> lines_;
  scenario::Transcript transcript_{[this](std::string_view line) { lines_.emplace_back(line); }};
  scenario::RecordingDialling objects_{transcript_};
  core::Dialling dialling_{objects_};
};

TEST_F(Dialling, TheNumberReachesTheObjectAsItStands) {
  for (const char* number : {"602 111 222", " (0603) 222-333 ", "", "\"quoted\" $(x) ; `y`", "žluťoučký"}) {
    EXPECT_EQ(0, ErrorOf(number)) << number;
  }
  const std::vector<std::string> expected = {R"(dial "602 111 222")", R"(dial " (0603) 222-333 ")",
                                             R"(dial "")", R"(dial "\"quoted\" $(x) ; `y`")",
                                             R"(dial "žluťoučký")"};
  EXPECT_EQ(expected, lines_);
}

TEST_F(Dialling, ControlCharactersAreRefusedBeforeAnythingIsMade) {
  objects_.SetDialObject(DialObject::kMissing);  // would raise 429
  const std::string number = "602";
  for (const char control : {'\0', '\n', '\r', '\t', '\x1b', '\x7f'}) {
    EXPECT_EQ(5, ErrorOf(number + control)) << int{control};
    EXPECT_EQ(5, ErrorOf(control + number)) << int{control};
  }
  constexpr const char* kNextLine = "\xc2\x85";
  constexpr const char* kLineSeparator = "\xe2\x80\xa8";
  EXPECT_EQ(5, ErrorOf(number + kNextLine));
  EXPECT_EQ(5, ErrorOf(kLineSeparator + number));
  EXPECT_TRUE(lines_.empty());
}

TEST_F(Dialling, TheObjectsFailuresComeThrough) {
  objects_.SetDialObject(DialObject::kMissing);
  EXPECT_EQ(429, ErrorOf("1"));
  EXPECT_TRUE(lines_.empty());
  objects_.SetDialObject(DialObject::kFails);
  EXPECT_EQ(440, ErrorOf("2"));
  EXPECT_EQ(std::vector<std::string>{R"(dial "2")"}, lines_);
}

}  // namespace
}  // namespace kestro
