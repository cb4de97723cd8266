#include "adapters/qt/qt_front_end_driver.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include "adapters/qt/qt_text.h"
#include "adapters/qt/user_events.h"

namespace kestro::adapters {

using forms::Control;
using forms::Form;

namespace {

/// The user's picture of a window's state.
forms::WindowState StateOf(const QtWindow& window) {
  if (window.isMinimized()) return forms::WindowState::kMinimized;
  return window.isMaximized() ? forms::WindowState::kMaximized : forms::WindowState::kNormal;
}

forms::ControlReading ReadControl(QtWindow& window, const Control& control) {
  if (const auto* item = dynamic_cast<const forms::MenuItem*>(&control)) return window.menus().Read(*item);
  forms::ControlReading reading = window.Binding(control)->Read();
  reading.focus = window.FocusedControl() == &control;
  return reading;
}

/// The user cannot type into it.
bool IsReadOnly(const QWidget& widget) {
  if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) return !combo->isEditable();
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return line->isReadOnly();
  if (const auto* lines = qobject_cast<const QPlainTextEdit*>(&widget)) return lines->isReadOnly();
  return true;
}

}  // namespace

bool QtFrontEndDriver::WindowReachable(const Form& form) const {
  const QtWindow* window = host_.Window(form);
  if (window == nullptr) return false;
  if (form.name() == tray_window_) return true;
  const QWidget* modal = QApplication::activeModalWidget();
  return window->isVisible() && (modal == nullptr || modal == window);
}

QWidget* QtFrontEndDriver::ReachableWidget(const Form& form, const Control& control) const {
  if (!WindowReachable(form)) return nullptr;
  QtWindow* window = host_.Window(form);
  const ControlBinding* binding = window->Binding(control);
  if (binding == nullptr) return nullptr;
  QWidget& widget = binding->widget();
  return widget.isEnabledTo(window) && widget.isVisibleTo(window) ? &widget : nullptr;
}

bool QtFrontEndDriver::Done() const {
  host_.boundary().RethrowEnd();
  return true;
}

bool QtFrontEndDriver::ClickMenu(QtWindow& window, const forms::MenuItem& item) {
  QtMenus& menus = window.menus();
  if (!menus.Knows(item) || !menus.Reachable(item) || menus.Menu(item) != nullptr) return false;
  QAction& action = menus.Action(item);
  if (action.isSeparator()) return false;
  while (QWidget* popup = QApplication::activePopupWidget()) {
    if (!popup->close()) break;
  }
  action.trigger();
  return Done();
}

void QtFrontEndDriver::PressButton(QtWindow& window, const Control& control, QWidget& widget) {
  window.FocusControl(control);
  if (!widget.isVisible()) {  // of the tray window
    qobject_cast<QAbstractButton*>(&widget)->click();
  } else if (qobject_cast<QCheckBox*>(&widget) != nullptr) {
    adapters::PressKey(widget, Qt::Key_Space);  // not the driver's own
  } else {
    PressMouse(widget, widget.rect().center());
  }
}

bool QtFrontEndDriver::Click(Form& form, Control& control) {
  if (const auto* item = dynamic_cast<const forms::MenuItem*>(&control)) {
    return WindowReachable(form) && ClickMenu(*host_.Window(form), *item);
  }
  QWidget* widget = ReachableWidget(form, control);
  if (qobject_cast<QAbstractButton*>(widget) == nullptr) return false;
  PressButton(*host_.Window(form), control, *widget);
  return Done();
}

bool QtFrontEndDriver::Type(Form& form, Control& control, std::string_view text) {
  QWidget* widget = ReachableWidget(form, control);
  if (widget == nullptr || IsReadOnly(*widget)) return false;
  host_.Window(form)->FocusControl(control);
  auto* combo = qobject_cast<QComboBox*>(widget);
  TypeOver(combo == nullptr ? *widget : *combo->lineEdit(), ToQString(text));
  return Done();
}

bool QtFrontEndDriver::Choose(Form& form, Control& control, int index) {
  QWidget* widget = ReachableWidget(form, control);
  if (auto* combo = qobject_cast<QComboBox*>(widget)) {
    if (index < 0 || index >= combo->count()) return false;
    host_.Window(form)->FocusControl(control);
    ChooseItem(*combo, index);
    return Done();
  }
  auto* pages = qobject_cast<QTabWidget*>(widget);
  if (pages == nullptr || index < 0 || index >= pages->count()) return false;
  ChooseTab(*pages->tabBar(), index);
  return Done();
}

bool QtFrontEndDriver::Check(Form& form, forms::CheckBox& control, bool checked) {
  QWidget* widget = ReachableWidget(form, control);
  auto* box = qobject_cast<QCheckBox*>(widget);
  if (box == nullptr) return false;
  host_.Window(form)->FocusControl(control);
  if (box->isChecked() != checked) PressButton(*host_.Window(form), control, *box);
  return Done();
}

void QtFrontEndDriver::Close(Form& form, int unload_mode) {
  if (unload_mode != forms::kControlMenu) {
    form.RequestUnload(unload_mode);
  } else if (WindowReachable(form) && host_.Window(form)->isVisible()) {
    host_.Window(form)->close();
  }
  Done();
}

forms::WindowReading QtFrontEndDriver::Read(Form& form) {
  QtWindow* window = host_.Window(form);
  std::unique_ptr<QtWindow> made_to_look_at;
  if (window == nullptr) {
    made_to_look_at = host_.MakeWindow(form);
    window = made_to_look_at.get();
  }
  forms::WindowReading reading{ToUtf8(window->windowTitle()), window->isVisible(), StateOf(*window), {}};
  for (const Control* control : form.controls()) reading.controls.push_back(ReadControl(*window, *control));
  return reading;
}

void QtFrontEndDriver::Settle() {
  QCoreApplication::processEvents();
  Done();
}

bool QtFrontEndDriver::SavePicture(Form& form, const std::string& native_file) {
  QtWindow* window = host_.Window(form);
  if (window == nullptr || !window->isVisible()) return false;
  QCoreApplication::processEvents();  // what is still to be laid out
  return window->grab().save(ToQString(native_file), "PNG");
}

}  // namespace kestro::adapters
