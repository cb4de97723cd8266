#include "adapters/qt/qt_message_boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QTimer>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

using ports::BoxAnswer;

constexpr int kIconMask = 0xF0;
constexpr int kLongestLine = 90;  // characters; a path is broken there

QMessageBox::Icon IconOf(int style) {
  switch (style & kIconMask) {
    case ports::kCritical:
      return QMessageBox::Critical;
    case ports::kQuestion:
      return QMessageBox::Question;
    case ports::kExclamation:
      return QMessageBox::Warning;
    case ports::kInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

QMessageBox::StandardButtons ButtonsOf(int style) {
  return (style & ports::kYesNo) != 0 ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok;
}

BoxAnswer AnswerOf(QMessageBox::StandardButton button) {
  switch (button) {
    case QMessageBox::Yes:
      return BoxAnswer::kYes;
    case QMessageBox::No:
      return BoxAnswer::kNo;
    default:
      return BoxAnswer::kOk;
  }
}

QMessageBox::StandardButton ButtonOf(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::kYes:
      return QMessageBox::Yes;
    case BoxAnswer::kNo:
      return QMessageBox::No;
    case BoxAnswer::kCancel:
      return QMessageBox::Cancel;
    case BoxAnswer::kOk:
      break;
  }
  return QMessageBox::Ok;
}

void Prepare(QMessageBox& box, const QString& title, std::string_view text, int style) {
  box.setWindowTitle(title);
  box.setTextFormat(Qt::PlainText);
  const int width = TextWidth(box.fontMetrics(), kLongestLine);
  box.setText(WrappedLines(ToQString(text), box.font(), width).join(QLatin1Char('\n')));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box.setIcon(IconOf(style));
  box.setStandardButtons(ButtonsOf(style));
  if ((style & ports::kSecondButton) != 0) box.setDefaultButton(QMessageBox::No);
  box.setWindowModality(Qt::ApplicationModal);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
}

/// A question can be asked in the middle of a long work; the hourglass is not for its buttons.
class ArrowPointer {
 public:
  ArrowPointer() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
  ~ArrowPointer() { QGuiApplication::restoreOverrideCursor(); }
  ArrowPointer(const ArrowPointer&) = delete;
  ArrowPointer& operator=(const ArrowPointer&) = delete;
};

}  // namespace

BoxAnswer QtMessageBoxes::Show(std::string_view text, int style) {
  boundary_.ThrowIfEnded();
  QMessageBox box(QApplication::activeWindow());
  Prepare(box, ToQString(title_), text, style);
  // One that appears by itself must not take the Enter key meant for another program.
  box.setAttribute(Qt::WA_ShowWithoutActivating, !boundary_.user_action());
  const ArrowPointer arrow;
  QEventLoop loop;
  QObject::connect(&box, &QMessageBox::finished, &loop, &QEventLoop::quit);
  box.show();
  box.raise();
  BoxOpens(box, text, style);
  boundary_.RunLoop(loop);
  const QAbstractButton* clicked = box.clickedButton();
  if (clicked == nullptr) return (style & ports::kYesNo) != 0 ? BoxAnswer::kNo : BoxAnswer::kOk;
  return AnswerOf(box.standardButton(box.clickedButton()));
}

void QtAnsweringMessageBoxes::BoxOpens(QMessageBox& box, std::string_view text, int style) {
  const auto press = [this, &box, text = std::string(text), style] {
    QAbstractButton* button = box.button(ButtonOf(answerer_(text, style)));
    if (button == nullptr) button = box.buttons().constFirst();
    button->click();
  };
  QTimer::singleShot(0, &box, [this, press] { boundary().Run(EventBoundary::Cause::kUser, press); });
}

}  // namespace kestro::adapters
