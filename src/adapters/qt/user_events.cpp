#include "adapters/qt/user_events.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTabBar>

namespace kestro::adapters {
namespace {

void SendMouse(QWidget& widget, QEvent::Type type, QPoint where, Qt::MouseButtons buttons) {
  QMouseEvent event(type, where, widget.mapToGlobal(where), Qt::LeftButton, buttons, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

void SendKey(QWidget& widget, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers) {
  QKeyEvent event(type, key, modifiers);
  QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

void PressMouse(QWidget& widget, QPoint where) {
  const QPointer<QWidget> guarded(&widget);
  SendMouse(widget, QEvent::MouseButtonPress, where, Qt::LeftButton);
  if (guarded) SendMouse(widget, QEvent::MouseButtonRelease, where, Qt::NoButton);
}

void PressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers) {
  const QPointer<QWidget> guarded(&widget);
  SendKey(widget, QEvent::KeyPress, key, modifiers);
  if (guarded) SendKey(widget, QEvent::KeyRelease, key, modifiers);
}

void DoubleClickMouse(QWidget& widget, QPoint where) {
  const QPointer<QWidget> guarded(&widget);
  SendMouse(widget, QEvent::MouseButtonDblClick, where, Qt::LeftButton);
  if (guarded) SendMouse(widget, QEvent::MouseButtonRelease, where, Qt::NoButton);
}

void TypeOver(QWidget& widget, const QString& text) {
  PressKey(widget, Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) return PressKey(widget, Qt::Key_Delete);
  QInputMethodEvent event;
  event.setCommitString(text);
  QCoreApplication::sendEvent(&widget, &event);
}

void ChooseItem(QComboBox& combo, int index) {
  combo.showPopup();
  const QPointer<QAbstractItemView> list = combo.view();
  list->setCurrentIndex(list->model()->index(index, combo.modelColumn(), combo.rootModelIndex()));
  SendKey(*list, QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
}

void ChooseTab(QTabBar& tabs, int index) { PressMouse(tabs, tabs.tabRect(index).center()); }

}  // namespace kestro::adapters
