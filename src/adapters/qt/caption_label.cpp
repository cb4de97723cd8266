#include "adapters/qt/caption_label.h"

#include <QEvent>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr int kLongestLine = 28;  // characters

}  // namespace

CaptionLabel::CaptionLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void CaptionLabel::SetCaption(const QString& caption) {
  caption_ = caption;
  UpdateText();
}

void CaptionLabel::SetField(QWidget& field) {
  setBuddy(&field);
  UpdateText();
}

void CaptionLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) UpdateText();
}

void CaptionLabel::UpdateText() {
  // Without a field to lead to, the label would show the mark itself.
  const QString text = buddy() == nullptr ? WithoutMnemonic(caption_) : caption_;
  const int width = TextWidth(fontMetrics(), kLongestLine);
  setText(WrappedLines(text, font(), width).join(QLatin1Char('\n')));
}

}  // namespace kestro::adapters
