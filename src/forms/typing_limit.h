#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestro::forms {

struct LimitedText {
  std::u32string text;
  std::size_t cursor = 0;  // characters up to behind what was taken
};

/// What remains of an edit of `before` to `after` when the text may hold `most` characters (0 = any number):
/// what was inserted is cut, what was there stays.
[[nodiscard]] LimitedText LimitTyping(std::u32string_view before, std::u32string after, int most);

}  // namespace kestro::forms
