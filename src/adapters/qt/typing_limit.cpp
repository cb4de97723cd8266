#include "adapters/qt/typing_limit.h"

#include "forms/typing_limit.h"

namespace kestro::adapters {

LimitedText LimitTyping(const QString& before, const QString& after, int most) {
  const auto [text, cursor] = forms::LimitTyping(before.toStdU32String(), after.toStdU32String(), most);
  return {QString::fromStdU32String(text), QString::fromStdU32String(text.substr(0, cursor)).size()};
}

}  // namespace kestro::adapters
