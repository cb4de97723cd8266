#pragma once

#include <string>
#include <string_view>

#include <QFontMetrics>
#include <QString>
#include <QStringList>

namespace kestro::adapters {

[[nodiscard]] QString ToQString(std::string_view utf8);
[[nodiscard]] std::string ToUtf8(const QString& text);

/// The caption as it is read aloud: "&File" is "File", "&&" is "&".
[[nodiscard]] QString WithoutMnemonic(const QString& caption);

/// The text as a tool tip: never taken for markup, wrapped where it is long.
[[nodiscard]] QString AsToolTip(const QString& text);

/// Lines of the text at most `width` pixels wide: broken between words where
/// possible, inside a word where not. Line breaks of the text stay. At least one line.
[[nodiscard]] QStringList WrappedLines(const QString& text, const QFont& font, int width);

/// Width in pixels of about `characters` characters of running text.
[[nodiscard]] int TextWidth(const QFontMetrics& metrics, int characters);

}  // namespace kestro::adapters
