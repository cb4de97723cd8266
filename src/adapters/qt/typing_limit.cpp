#include "adapters/qt/typing_limit.h"

#include <algorithm>
#include <string>

namespace kestro::adapters {

LimitedText LimitTyping(const QString& before, const QString& after, int most) {
  const std::u32string old_text = before.toStdU32String();
  std::u32string text = after.toStdU32String();
  const auto prefix = static_cast<std::size_t>(
      std::mismatch(old_text.begin(), old_text.end(), text.begin(), text.end()).first - old_text.begin());
  std::size_t suffix = 0;
  const std::size_t most_suffix = std::min(old_text.size(), text.size()) - prefix;
  while (suffix < most_suffix && old_text[old_text.size() - 1 - suffix] == text[text.size() - 1 - suffix]) {
    ++suffix;
  }
  std::size_t inserted = text.size() - prefix - suffix;
  const auto limit = static_cast<std::size_t>(std::max(most, 0));
  if (limit > 0 && text.size() > limit) {
    const std::size_t surplus = std::min(inserted, text.size() - limit);
    text.erase(prefix + inserted - surplus, surplus);
    inserted -= surplus;
  }
  return {QString::fromStdU32String(text),
          QString::fromStdU32String(text.substr(0, prefix + inserted)).size()};
}

}  // namespace kestro::adapters
