#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QToolBar>
#include <QToolTip>

#include "adapters/qt/grid_view.h"
#include "adapters/qt/user_events.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

/// What only the widgets can show; what both front ends do is tested on both.
class GridWidgets : public ScreenFrontEnd {
 protected:
  GridWidgets() { form_.Show(); }

  adapters::GridView& View() { return WidgetOf<adapters::GridView>(form_.grid); }
  Events TakeEvents() { return std::exchange(form_.events, {}); }
  void Fill(const CountedRows& rows) {
    form_.grid.SetRows(&rows);
    QCoreApplication::processEvents();
  }
  void SendMouse(QEvent::Type type, QPoint where, Qt::MouseButton button) {
    QMouseEvent event(type, where, View().viewport()->mapToGlobal(where), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(View().viewport(), &event);
  }

  SampleForm form_{host_};
};

TEST_F(GridWidgets, AnyMouseButtonPressesAndOnlyTheLeftOneTwice) {
  Fill(form_.few);
  const QPoint second = View().BringIntoSight(1);
  SendMouse(QEvent::MouseButtonPress, second, Qt::RightButton);
  EXPECT_EQ(View().SelectedRow(), 1);
  SendMouse(QEvent::MouseButtonPress, View().BringIntoSight(-1), Qt::RightButton);
  EXPECT_EQ(View().SelectedRow(), -1);
  SendMouse(QEvent::MouseButtonPress, second, Qt::LeftButton);
  SendMouse(QEvent::MouseButtonDblClick, second, Qt::RightButton);
  SendMouse(QEvent::MouseButtonDblClick, View().BringIntoSight(2),
            Qt::LeftButton);  // moved on to another row
  SendMouse(QEvent::MouseMove, second, Qt::LeftButton);
  EXPECT_EQ(TakeEvents(), (Events{"activate", "row 1", "row -1", "row 1", "row 1", "row 2"}));
  SendMouse(QEvent::MouseButtonDblClick, View().BringIntoSight(2), Qt::LeftButton);
  EXPECT_EQ(TakeEvents(), (Events{"double click"}));
}

TEST_F(GridWidgets, TheHeaderIsResizedByTheUserAndSortsNothingItself) {
  Fill(form_.few);
  QHeaderView& header = *View().horizontalHeader();
  EXPECT_EQ(header.sectionSize(0), 200);  // 3000 twips
  EXPECT_GE(header.length(), View().viewport()->width());
  EXPECT_EQ(header.sectionResizeMode(0), QHeaderView::Interactive);
  header.resizeSection(0, 120);
  driver_.PressHeader(form_, form_.grid, 1);
  form_.grid.SetColumnCaption(0, "Other");
  EXPECT_EQ(header.sectionSize(0), 120);
  EXPECT_FALSE(header.isSortIndicatorShown());
  EXPECT_FALSE(View().isSortingEnabled());
  EXPECT_EQ(TakeEvents(), (Events{"activate", "header co"}));
}

TEST_F(GridWidgets, ACellThatIsCutIsShownInFull) {
  Fill(form_.few);
  const auto tip_of = [&](int column) {
    QToolTip::hideText();
    const QPoint where = View().visualRect(View().model()->index(1, column)).center();
    QHelpEvent help(QEvent::ToolTip, where, View().viewport()->mapToGlobal(where));
    QCoreApplication::sendEvent(View().viewport(), &help);
    return QToolTip::text().toStdString();
  };
  EXPECT_EQ(tip_of(0), "");
  EXPECT_EQ(tip_of(1), "<qt>&lt;b&gt;bold&lt;/b&gt; &amp; &quot;quoted&quot;<br>second line</qt>");
}

TEST_F(GridWidgets, ToolsHavePicturesNamesAndTips) {
  const auto& bar = WidgetOf<QToolBar>(form_.tools);
  for (const int number : {1, 2, 3, 5, 7}) {
    const QAction& action = *bar.actions()[number - 1];
    EXPECT_FALSE(action.icon().pixmap(48).isNull()) << number;
    EXPECT_EQ(action.icon().availableSizes().size(), 3) << number;
    const std::string text = "Tool & " + std::to_string(number);
    const QWidget* button = bar.widgetForAction(bar.actions()[number - 1]);
    EXPECT_EQ(button->accessibleName().toStdString(), text);
    EXPECT_EQ(action.toolTip().toStdString(), "<qt>Tool &amp; " + std::to_string(number) + "</qt>");
  }
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&View())->role(), QAccessible::Table);
  EXPECT_EQ(View().accessibleName(), "grid");
}

TEST_F(GridWidgets, DelInATextDeletesTheText) {
  auto& line = WidgetOf<QLineEdit>(form_.txtName);
  auto& lines = WidgetOf<QPlainTextEdit>(form_.txtNote);
  auto& field = *WidgetOf<QComboBox>(form_.cmbTitle).lineEdit();
  form_.txtName.SetText("abc");
  form_.txtNote.SetText("abc");
  form_.cmbTitle.SetText("abc");
  TakeEvents();
  const forms::Key del = *forms::ParseKey("Del");
  form_.txtName.SetFocus();
  line.setCursorPosition(0);
  driver_.PressKey(form_, del);
  form_.pages.SetTab(1);
  form_.txtNote.SetFocus();
  lines.moveCursor(QTextCursor::Start);
  driver_.PressKey(form_, del);
  form_.cmbTitle.SetFocus();
  field.setCursorPosition(1);
  driver_.PressKey(form_, del);
  EXPECT_EQ(form_.txtName.text() + form_.txtNote.text() + form_.cmbTitle.text(), "bcbcac");
  EXPECT_EQ(TakeEvents(), (Events{"txtName bc", "txtNote bc"}));
  form_.txtName.SetReadOnly(true);
  form_.txtName.SetFocus();
  driver_.PressKey(form_, del);
  EXPECT_EQ(TakeEvents(), (Events{"mnuDelete"}));
}

TEST_F(GridWidgets, TypingInsideAnEditableListKeepsTheCursorWhereItIs) {
  auto& combo = WidgetOf<QComboBox>(form_.cmbTitle);
  QLineEdit& field = *combo.lineEdit();
  form_.cmbTitle.SetMaxLength(4);
  driver_.Choose(form_, form_.cmbTitle, 1);
  field.setCursorPosition(1);
  adapters::PressKey(field, Qt::Key_Delete);
  EXPECT_EQ(form_.cmbTitle.text(), "Ms");
  EXPECT_EQ(form_.cmbTitle.list_index(), -1);
  EXPECT_EQ(field.cursorPosition(), 1);
  QInputMethodEvent insert;
  insert.setCommitString("rabc");
  QCoreApplication::sendEvent(&field, &insert);
  EXPECT_EQ(form_.cmbTitle.text(), "Mras");
  EXPECT_EQ(field.text(), "Mras");
  EXPECT_EQ(field.cursorPosition(), 3);
  adapters::PressKey(field, Qt::Key_Return);
  EXPECT_EQ(combo.count(), 3);  // what is typed is no new item
  driver_.Type(form_, form_.cmbTitle, "D");
  for (const char* typed : {"D", "Dr", "M"}) {  // and is not completed to one
    driver_.PressKey(form_, *forms::ParseKey("End"));
    driver_.Type(form_, form_.cmbTitle, typed);
    EXPECT_EQ(field.text(), typed);
  }
}

TEST_F(GridWidgets, KeysAreShownInTheMenuAndNoKeyHoldsOn) {
  const adapters::QtMenus& menus = host_.Window(form_)->menus();
  EXPECT_EQ(menus.Action(form_.mnuNew).shortcut().toString(), "Ctrl+N");
  EXPECT_FALSE(menus.Action(form_.mnuDelete).autoRepeat());
  EXPECT_EQ(menus.Action(form_.mnuEdit).text(), "&Edit\tEnter");
}

TEST_F(GridWidgets, AWindowWhoseFormIsGoneAsksNoRows) {
  auto form = std::make_unique<SampleForm>(host_);
  form->grid.SetRows(&form_.few);
  form->Show();
  QCoreApplication::processEvents();
  adapters::QtWindow& window = *host_.Window(*form);
  auto& view = dynamic_cast<adapters::GridView&>(const_cast<QWidget&>(window.Binding(form->grid)->widget()));
  boundary_.Run(adapters::EventBoundary::Cause::kUser, [&] {  // the window is buried after the event
    form.reset();
    form_.few.cells_asked = 0;
    static_cast<void>(view.grab());
    EXPECT_EQ(view.model()->rowCount(), 0);
    EXPECT_EQ(form_.few.cells_asked, 0);
  });
}

}  // namespace
}  // namespace kestro::front_end_tests
