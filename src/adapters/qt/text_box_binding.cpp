#include <algorithm>
#include <limits>
#include <optional>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"
#include "adapters/qt/typing_limit.h"

namespace kestro::adapters {
namespace {

constexpr int kFewestCharacters = 12;
constexpr int kFewestLines = 3;

class LineBinding final : public ControlBinding {
 public:
  LineBinding(forms::TextBox& box, QWidget& parent, BindingOwner& owner)
      : ControlBinding(box, owner), box_(box), widget_(*new QLineEdit(&parent)) {
    // The limit is for typing; the widget's own would cut what the program sets.
    widget_.setMaxLength(std::numeric_limits<int>::max());
    widget_.setMinimumWidth(TextWidth(widget_.fontMetrics(), kFewestCharacters));
    QObject::connect(&widget_, &QLineEdit::textEdited, &widget_, [this] { Edited(); });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void Edited() {
    const LimitedText limited = LimitTyping(ToQString(box_.text()), widget_.text(), box_.max_length());
    if (limited.text != widget_.text()) {
      widget_.setText(limited.text);
      widget_.setCursorPosition(static_cast<int>(limited.cursor));
    }
    owner().UserActed(box_, [&] { box_.SetText(ToUtf8(limited.text)); });
  }
  void SyncContent() override {
    const QString text = ToQString(box_.text());
    if (widget_.text() != text) widget_.setText(text);
    widget_.setReadOnly(box_.read_only());
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {ToUtf8(widget_.text())};
  }

  forms::TextBox& box_;
  QLineEdit& widget_;
};

/// Asks for no more than a few lines; where there is more room, the layout gives it.
class LinesEdit final : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;
  [[nodiscard]] QSize sizeHint() const override {
    return {QPlainTextEdit::sizeHint().width(), minimumHeight()};
  }
};

/// Several lines. The program's texts separate lines by CR LF, the widget keeps paragraphs.
class LinesBinding final : public ControlBinding {
 public:
  LinesBinding(forms::TextBox& box, QWidget& parent, BindingOwner& owner)
      : ControlBinding(box, owner), box_(box), widget_(*new LinesEdit(&parent)) {
    widget_.setTabChangesFocus(true);
    widget_.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const QFontMetrics metrics = widget_.fontMetrics();
    widget_.setMinimumSize(
        TextWidth(metrics, kFewestCharacters),
        metrics.lineSpacing() * kFewestLines + 2 * widget_.frameWidth() + kDocumentMargins);
    QObject::connect(&widget_, &QPlainTextEdit::textChanged, &widget_, [this] {
      if (!syncing()) Edited();
    });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  static constexpr int kDocumentMargins = 8;  // pixels above and below together

  /// Text as the program writes it. (The widget's own plain text would lose no-break spaces.)
  [[nodiscard]] QString Text() const {
    QString text = widget_.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text.replace(QLatin1String("\n"), line_end_);
  }
  void Edited() {
    shown_.reset();
    const QString typed = Text();
    const LimitedText limited = LimitTyping(ToQString(box_.text()), typed, box_.max_length());
    owner().UserActed(box_, [&] { box_.SetText(ToUtf8(limited.text)); });
    if (limited.text == typed) return;
    const QString before_cursor = limited.text.left(limited.cursor).replace(line_end_, QLatin1String("\n"));
    PutCursor(static_cast<int>(before_cursor.size()));
  }
  void PutCursor(int position) {
    QTextCursor cursor = widget_.textCursor();
    cursor.setPosition(std::min(position, widget_.document()->characterCount() - 1));
    widget_.setTextCursor(cursor);
  }
  void SyncContent() override {
    widget_.setReadOnly(box_.read_only());
    const QString text = ToQString(box_.text());
    if (shown_ == text) return;
    if (Text() != text) {
      const bool windows_line_ends =
          text.contains(QLatin1String("\r\n")) || !text.contains(QLatin1Char('\n'));
      line_end_ = windows_line_ends ? QStringLiteral("\r\n") : QStringLiteral("\n");
      widget_.setPlainText(text);
    }
    shown_ = text;
  }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {ToUtf8(Text())}; }

  forms::TextBox& box_;
  QPlainTextEdit& widget_;
  QString line_end_ = QStringLiteral("\r\n");
  std::optional<QString> shown_;  // the program's text as long as the user has not edited it
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::TextBox& box, QWidget& parent, BindingOwner& owner) {
  if (box.lines() == forms::TextBox::Lines::kOne) return std::make_unique<LineBinding>(box, parent, owner);
  return std::make_unique<LinesBinding>(box, parent, owner);
}

}  // namespace kestro::adapters
