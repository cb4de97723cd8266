#include "forms/typing_limit.h"

#include <algorithm>
#include <utility>

namespace kestro::forms {

LimitedText LimitTyping(std::u32string_view before, std::u32string after, int most) {
  const auto prefix = static_cast<std::size_t>(
      std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin());
  std::size_t suffix = 0;
  const std::size_t most_suffix = std::min(before.size(), after.size()) - prefix;
  while (suffix < most_suffix && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
    ++suffix;
  }
  std::size_t inserted = after.size() - prefix - suffix;
  const auto limit = static_cast<std::size_t>(std::max(most, 0));
  if (limit > 0 && after.size() > limit) {
    const std::size_t surplus = std::min(inserted, after.size() - limit);
    after.erase(prefix + inserted - surplus, surplus);
    inserted -= surplus;
  }
  return {std::move(after), prefix + inserted};
}

}  // namespace kestro::forms
