#pragma once

#include <QString>

namespace kestro::adapters {

struct LimitedText {
  QString text;
  qsizetype cursor;  // behind what was taken, in QString units
};

/// What remains of an edit of `before` to `after` when the text may hold `most`
/// characters (0 = any number): what was inserted is cut, what was there stays.
[[nodiscard]] LimitedText LimitTyping(const QString& before, const QString& after, int most);

}  // namespace kestro::adapters
