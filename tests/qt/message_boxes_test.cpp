#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>

#include "adapters/qt/qt_message_boxes.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

using ports::BoxAnswer;
using MessageBoxes = ScreenFrontEnd;

QMessageBox* OpenBox() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }

TEST_F(MessageBoxes, TheButtonsAndIconsFollowTheStyle) {
  struct Case {
    int style;
    QMessageBox::Icon icon;
    BoxAnswer pressed;
    BoxAnswer answer;
  };
  const Case cases[] = {
      {ports::kInformation, QMessageBox::Information, BoxAnswer::kOk, BoxAnswer::kOk},
      {ports::kYesNo | ports::kQuestion, QMessageBox::Question, BoxAnswer::kYes, BoxAnswer::kYes},
      {ports::kYesNo | ports::kQuestion, QMessageBox::Question, BoxAnswer::kNo, BoxAnswer::kNo},
      {ports::kCritical, QMessageBox::Critical, BoxAnswer::kOk, BoxAnswer::kOk},
      {ports::kExclamation, QMessageBox::Warning, BoxAnswer::kOk, BoxAnswer::kOk},
      {ports::kOkOnly, QMessageBox::NoIcon, BoxAnswer::kYes, BoxAnswer::kOk},  // no such button
  };
  for (const Case& test : cases) {
    adapters::QtAnsweringMessageBoxes boxes(boundary_, "Title", [&](std::string_view text, int style) {
      EXPECT_EQ(style, test.style);
      EXPECT_EQ(text, "<b>5 & 6</b>");
      EXPECT_EQ(OpenBox()->icon(), test.icon);
      EXPECT_EQ(OpenBox()->text().toStdString(), "<b>5 & 6</b>");
      EXPECT_EQ(OpenBox()->textFormat(), Qt::PlainText);
      EXPECT_EQ(OpenBox()->windowTitle().toStdString(), "Title");
      return test.pressed;
    });
    EXPECT_EQ(boxes.Show("<b>5 & 6</b>", test.style), test.answer) << test.style;
  }
}

TEST_F(MessageBoxes, ABoxBlocksTheWindowsAndClosingItIsNo) {
  SampleForm form(host_);
  form.Show();
  adapters::QtMessageBoxes boxes(boundary_, "Title");
  bool reached = true;
  post_([&] {
    reached = driver_.Click(form, form.cmdCancel);
    OpenBox()->close();
    if (OpenBox() != nullptr) OpenBox()->reject();
  });
  EXPECT_EQ(boxes.Show("Really?", ports::kYesNo), BoxAnswer::kNo);
  EXPECT_FALSE(reached);
}

TEST_F(MessageBoxes, TheEnterKeyGoesToTheSecondButtonWhenTheStyleSaysSo) {
  adapters::QtMessageBoxes boxes(boundary_, "Title");
  bool closed_by_key = false;
  post_([&] {
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(OpenBox(), &enter);
    closed_by_key = OpenBox() == nullptr;
    if (!closed_by_key) OpenBox()->reject();
  });
  EXPECT_EQ(boxes.Show("Really?", ports::kYesNo | ports::kSecondButton), BoxAnswer::kNo);
  EXPECT_TRUE(closed_by_key);
}

TEST_F(MessageBoxes, ALongPathDoesNotMakeABoxWiderThanTheScreen) {
  adapters::QtAnsweringMessageBoxes boxes(boundary_, "Title", [&](std::string_view, int) {
    EXPECT_LT(OpenBox()->sizeHint().width(), 1200);
    return BoxAnswer::kOk;
  });
  EXPECT_EQ(boxes.Show("The file '/" + std::string(500, 'x') + "' is missing.", ports::kCritical),
            BoxAnswer::kOk);
}

}  // namespace
}  // namespace kestro::front_end_tests
