#include <QFocusEvent>

#include "adapters/qt/qt_window.h"
#include "forms/keyboard_focus.h"

// Where the keyboard is inside a window. The rules are the program's, not the
// toolkit's: the same on every front end.

namespace kestro::adapters {
namespace {

using forms::Control;

bool IsUsersReason(Qt::FocusReason reason) {
  return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

}  // namespace

/// The user moved the keyboard, not the toolkit by itself: that pretends to
/// press the tab key when the widget that has the keyboard is going.
bool QtWindow::IsUsersMove(Qt::FocusReason reason) const {
  const QWidget* holder = focus_ == nullptr ? nullptr : WidgetOf(*focus_);
  const bool holder_stays = holder == nullptr || (holder->isVisibleTo(this) && holder->isEnabledTo(this));
  return IsUsersReason(reason) && (reason == Qt::MouseFocusReason || holder_stays);
}

void QtWindow::FocusControl(const Control& control) {
  if (forms::CanHaveKeyboard(control)) GiveFocus(&control);
}

void QtWindow::GiveFocus(const Control* control) {
  focus_ = control;
  giving_focus_ = true;
  if (QWidget* widget = control == nullptr ? nullptr : WidgetOf(*control)) {
    widget->setFocus(Qt::OtherFocusReason);
  } else if (QWidget* holder = focusWidget()) {
    holder->clearFocus();
  }
  giving_focus_ = false;
}

void QtWindow::GiveFirstFocus() {
  if (focus_ != nullptr) return;
  if (const Control* first = forms::KeyboardPlaceFrom(*form_, nullptr)) GiveFocus(first);
}

/// A control that can no longer have the keyboard hands it to the next one that can.
void QtWindow::MoveFocusOn() {
  if (form_ == nullptr || focus_ == nullptr || focus_->Reachable()) return;
  GiveFocus(forms::KeyboardPlaceFrom(*form_, focus_));
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn && !giving_focus_ && form_ != nullptr &&
      IsUsersMove(static_cast<QFocusEvent*>(event)->reason())) {
    for (const auto& [control, binding] : by_control_) {
      if (&binding->widget() == watched && forms::TakesKeyboard(*control)) focus_ = control;
    }
  }
  return QWidget::eventFilter(watched, event);
}

const Control* QtWindow::FocusedControl() const {
  const QWidget* holder = focusWidget();
  for (const auto& [control, binding] : by_control_) {
    if (&binding->widget() == holder && forms::TakesKeyboard(*control)) return control;
  }
  return nullptr;
}

}  // namespace kestro::adapters
