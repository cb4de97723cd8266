#pragma once

#include <QString>

namespace kestro::adapters {

struct LimitedText {
  QString text;
  qsizetype cursor;  // behind what was taken, in QString units
};

/// forms::LimitTyping for texts of Qt.
[[nodiscard]] LimitedText LimitTyping(const QString& before, const QString& after, int most);

}  // namespace kestro::adapters
