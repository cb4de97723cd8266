#include "adapters/qt/value_text.h"

#include <algorithm>

#include <QEvent>
#include <QTextDocument>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr int kMostLines = 5;
constexpr int kPreferredCharacters = 32;  // a longer text is wrapped, if the window is not wide anyway
constexpr int kFewestCharacters = 12;
constexpr double kHeadingScale = 1.5;

}  // namespace

ValueText::ValueText(QWidget* parent, Weight weight) : QTextEdit(parent), weight_(weight) {
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setAcceptRichText(false);
  setTabChangesFocus(true);
  setFocusPolicy(Qt::ClickFocus);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  viewport()->setAutoFillBackground(false);
  document()->setDocumentMargin(0);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  if (weight_ == Weight::kHeading) UseHeadingFont();
}

void ValueText::UseHeadingFont() {
  QFont heading = parentWidget()->font();
  if (heading.pointSizeF() > 0) {
    heading.setPointSizeF(heading.pointSizeF() * kHeadingScale);
  } else {
    heading.setPixelSize(static_cast<int>(heading.pixelSize() * kHeadingScale));
  }
  heading.setBold(true);
  setFont(heading);
}

void ValueText::SetValue(const QString& value) {
  if (value == value_) return;
  value_ = value;
  setPlainText(value);
  UpdateScrolling();
  updateGeometry();
}

QSize ValueText::sizeHint() const {
  const int widest = TextWidth(fontMetrics(), kPreferredCharacters);
  int width = TextWidth(fontMetrics(), kFewestCharacters);
  for (const QString& line : WrappedLines(value_, font(), widest)) {
    width = std::max(width, fontMetrics().horizontalAdvance(line) + 1);
  }
  return {width, heightForWidth(width)};
}

QSize ValueText::minimumSizeHint() const {
  return {TextWidth(fontMetrics(), kFewestCharacters), LineHeight()};
}

int ValueText::heightForWidth(int width) const {
  return std::clamp(LinesAt(width), 1, kMostLines) * LineHeight();
}

int ValueText::LinesAt(int width) const {
  return static_cast<int>(WrappedLines(value_, font(), std::max(width, 1)).size());
}

void ValueText::resizeEvent(QResizeEvent* event) {
  QTextEdit::resizeEvent(event);
  UpdateScrolling();
}

/// A pixel too few for the last line is no reason to scroll.
void ValueText::UpdateScrolling() {
  const bool scrolls = LinesAt(width()) > kMostLines;
  setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void ValueText::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) updateGeometry();
}

int ValueText::LineHeight() const { return fontMetrics().height() + 1; }

}  // namespace kestro::adapters
