#include "forms/key.h"

#include <gtest/gtest.h>

namespace kestro::forms {
namespace {

TEST(Key, ReadsModifiersAndNames) {
  const struct {
    const char* written;
    std::optional<Key> key;
  } cases[] = {
      {"Del", Key{false, false, false, "Del"}},
      {"Ctrl+Shift+N", Key{true, false, true, "N"}},
      {"Alt+F12", Key{false, true, false, "F12"}},
      {"Shift+Enter", Key{false, false, true, "Enter"}},
      {"Ctrl+0", Key{true, false, false, "0"}},
      {"N", std::nullopt},        // a text
      {"Shift+N", std::nullopt},  // a text, too
      {"Ctrl+n", std::nullopt},
      {"Ctrl+", std::nullopt},
      {"Ctrl", std::nullopt},
      {"F13", std::nullopt},
      {"del", std::nullopt},
      {"Del ", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& test : cases) EXPECT_EQ(ParseKey(test.written), test.key) << test.written;
}

}  // namespace
}  // namespace kestro::forms
