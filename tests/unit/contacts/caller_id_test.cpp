#include "contacts/caller_id.h"

#include <gtest/gtest.h>

namespace kestro::contacts {
namespace {

TEST(CallerIdTest, InternationalForm) {
  for (const auto& [given, expected] : {std::pair{"", ""},
                                        {"   ", ""},
                                        {"5", "5"},
                                        {"0", "0"},
                                        {"+", "+"},
                                        {"12", "+42012"},
                                        {"00", "+4200"},
                                        {"001", "+1"},
                                        {"101", "+420101"},
                                        {"00421234567", "+421234567"},
                                        {"+420602111222", "+420602111222"},
                                        {"602111222", "+420602111222"},
                                        {" 0602111222 ", "+420602111222"},
                                        {"0602 11", "+420602 11"},
                                        {"ž1", "+420ž1"},
                                        {"ž", "ž"}}) {
    EXPECT_EQ(InternationalCallerId(given), expected) << given;
  }
}

TEST(CallerIdTest, SeparatorsAreRemovedFirst) {
  for (const auto& [given, expected] : {std::pair{"(0602) 111-222/3", "+4206021112223"},
                                        {"00 421 / 2 345.67", "+421234567"},
                                        {"+420 602\\111 222", "+420602111222"},
                                        {" - ", ""},
                                        {"602\t111", "+420602\t111"}}) {
    EXPECT_EQ(InternationalCallerIdFromText(given), expected) << given;
  }
}

}  // namespace
}  // namespace kestro::contacts
