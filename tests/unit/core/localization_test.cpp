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

TEST_F(LocalizationTest, AnIdentifierWithoutTextIsAnError) {
  for (const auto& [id, number] :
       {std::pair{"111", 326}, {"99", 326}, {"", 13}, {"1O3", 13}, {"99999999999", 6}}) {
    try {
      (void)texts.GetLocalizedString(id);
      FAIL() << id;
    } catch (const base::RuntimeError& error) {
      EXPECT_EQ(error.number(), number) << id;
      if (number == 326) {
        EXPECT_EQ(error.description(), std::string("Text ") + id + " is not in the catalogue");
      }
    }
  }
}

}  // namespace
}  // namespace kestro::core
