#include "core/dialling.h"

#include <vector>

#include <gtest/gtest.h>

#include "scenario/recording_dialling.h"
#include "support/error_number.h"

namespace kestro {
namespace {

TEST(Dialling, ControlCharactersAreRefusedBeforeAnythingIsMade) {
  std::vector<std::string> lines;
  scenario::Transcript transcript([&](std::string_view line) { lines.emplace_back(line); });
  scenario::RecordingDialling objects(transcript);
  core::Dialling dialling(objects);
  const auto error_of = [&](const std::string& number) {
    return test::ErrorNumberOf([&] { dialling.Dial(number); });
  };
  // Anything else reaches the object as it stands.
  EXPECT_EQ(0, error_of("\"quoted\" $(x) ; `y` žluťoučký"));
  EXPECT_EQ(std::vector<std::string>{R"(dial "\"quoted\" $(x) ; `y` žluťoučký")"}, lines);
  objects.SetDialObject(scenario::DialObject::kMissing);
  EXPECT_EQ(429, error_of("602"));
  for (const char control : {'\0', '\n', '\r', '\t', '\x1b', '\x7f'}) {
    EXPECT_EQ(5, error_of(std::string("602") + control)) << int{control};
    EXPECT_EQ(5, error_of(control + std::string("602"))) << int{control};
  }
  EXPECT_EQ(5, error_of("602\xc2\x85")) << "the next line";
  EXPECT_EQ(5, error_of("\xe2\x80\xa8"
                        "602"))
      << "a separator of lines";
}

}  // namespace
}  // namespace kestro
