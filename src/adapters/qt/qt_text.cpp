#include "adapters/qt/qt_text.h"

#include <QTextLayout>

namespace kestro::adapters {
namespace {

void AppendWrapped(const QString& paragraph, const QFont& font, int width, QStringList& lines) {
  QTextLayout layout(paragraph, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  const auto before = lines.size();
  while (true) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    lines.append(paragraph.mid(line.textStart(), line.textLength()));
  }
  layout.endLayout();
  if (lines.size() == before) lines.append(QString());
}

}  // namespace

QString ToQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string ToUtf8(const QString& text) { return text.toStdString(); }

QString WithoutMnemonic(const QString& caption) {
  QString plain;
  plain.reserve(caption.size());
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == QLatin1Char('&') && i + 1 < caption.size()) ++i;
    plain.append(caption[i]);
  }
  return plain;
}

QString AsToolTip(const QString& text) {
  if (text.isEmpty()) return {};
  QString markup = text.toHtmlEscaped();
  markup.replace(QLatin1String("\r\n"), QLatin1String("\n"))
      .replace(QLatin1Char('\n'), QLatin1String("<br>"));
  return QLatin1String("<qt>") + markup + QLatin1String("</qt>");
}

QStringList WrappedLines(const QString& text, const QFont& font, int width) {
  QString normal = text;
  normal.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  QStringList lines;
  for (const QString& paragraph : normal.split(QLatin1Char('\n')))
    AppendWrapped(paragraph, font, width, lines);
  return lines;
}

int TextWidth(const QFontMetrics& metrics, int characters) { return metrics.averageCharWidth() * characters; }

}  // namespace kestro::adapters
