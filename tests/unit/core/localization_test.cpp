#include "core/localization.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace kestro::core {
namespace {

class LocalizationTest : public ::testing::Test {
 protected:
  test::LogCapture capture;
  LogModule log{capture};
  Localization texts{log};
};

TEST_F(LocalizationTest, FillsPlaceholdersFromLeftToRight) {
  const std::string line_break(kLineBreak);
  EXPECT_EQ(texts.GetLocalizedString("159", {"3"}), "Phone 3");
  EXPECT_EQ(texts.GetLocalizedString("139", {line_break, "12"}),
            "Import of contacts was interrupted. \r\n 12 contacts were imported.");
  EXPECT_EQ(texts.GetLocalizedString("113", {line_break}),
            "Database file \r\n is read only.%%pFile attributes must allow writing.");
  EXPECT_EQ(texts.GetLocalizedString("193", {"surplus"}), "OK");
  EXPECT_EQ(texts.GetLocalizedString("113", {"%%p", "a", "b"}),
            "Database file a is read only.bFile attributes must allow writing.");
}

TEST_F(LocalizationTest, ATextIdentifierWithoutTextIsAnError) {
  const std::tuple<const char*, int, const char*> cases[] = {{"111", 326, "Text 111 is not in the catalogue"},
                                                             {"99", 326, "Text 99 is not in the catalogue"},
                                                             {"", 13, "Type mismatch"},
                                                             {"1O3", 13, "Type mismatch"},
                                                             {"99999999999", 6, "Overflow"}};
  for (const auto& [id, number, description] : cases) {
    EXPECT_THROW(static_cast<void>(texts.GetLocalizedString(id)), base::RuntimeError) << id;
    EXPECT_EQ(capture.lines.back(), "ERROR " + std::to_string(number) +
                                        " KESTROCTI.Localization.GetLocalizedString:: | " + description);
  }
}

}  // namespace
}  // namespace kestro::core
