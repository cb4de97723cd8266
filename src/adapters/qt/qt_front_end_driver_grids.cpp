#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QToolBar>

#include "adapters/qt/grid_view.h"
#include "adapters/qt/qt_front_end_driver.h"
#include "adapters/qt/qt_keys.h"
#include "adapters/qt/user_events.h"

// What the user does with grids, tool bars and the keyboard.

namespace kestro::adapters {

using forms::Form;
using forms::Grid;

bool QtFrontEndDriver::PressRow(Form& form, Grid& grid, std::int64_t row) {
  auto* view = dynamic_cast<GridView*>(ReachableWidget(form, grid));
  if (view == nullptr || row < Grid::kNoRow || row >= view->model()->rowCount()) return false;
  host_.Window(form)->FocusControl(grid);
  PressMouse(*view->viewport(), view->BringIntoSight(static_cast<int>(row)));
  return Done();
}

bool QtFrontEndDriver::DoubleClickRow(Form& form, Grid& grid, std::int64_t row) {
  if (!PressRow(form, grid, row)) return false;
  auto* view = dynamic_cast<GridView*>(ReachableWidget(form, grid));
  if (view == nullptr || row >= view->model()->rowCount()) return true;
  DoubleClickMouse(*view->viewport(), view->BringIntoSight(static_cast<int>(row)));
  return Done();
}

bool QtFrontEndDriver::PressHeader(Form& form, Grid& grid, int column) {
  auto* view = dynamic_cast<GridView*>(ReachableWidget(form, grid));
  if (view == nullptr || column < 0 || column >= view->model()->columnCount()) return false;
  host_.Window(form)->FocusControl(grid);
  QHeaderView& header = *view->horizontalHeader();
  if (view->model()->rowCount() > 0) view->scrollTo(view->model()->index(view->rowAt(0), column));
  const int middle = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
  PressMouse(*header.viewport(), {middle, header.height() / 2});
  return Done();
}

bool QtFrontEndDriver::PressTool(Form& form, forms::ToolBar& bar, int number) {
  auto* widget = qobject_cast<QToolBar*>(ReachableWidget(form, bar));
  if (widget == nullptr || number < 1 || number > widget->actions().size()) return false;
  QAction& action = *widget->actions()[number - 1];
  if (action.isSeparator() || !action.isEnabled() || !action.isVisible()) return false;
  QWidget* button = widget->widgetForAction(&action);
  if (button->isVisible()) {
    PressMouse(*button, button->rect().center());
  } else {  // of the tray window, or in the part of the bar that unfolds
    action.trigger();
  }
  return Done();
}

bool QtFrontEndDriver::PressKey(Form& form, const forms::Key& key) {
  const QtWindow* window = host_.Window(form);
  if (!WindowReachable(form) || !window->isVisible()) return false;
  host_.Window(form)->BringToFront(true);
  Settle();  // shortcuts are those of the active window
  window = host_.Window(form);
  if (window == nullptr || !window->isVisible()) return true;
  QWidget* focus = window->focusWidget();
  adapters::PressKey(focus == nullptr ? *host_.Window(form) : *focus, KeyCode(key), Modifiers(key));
  return Done();
}

}  // namespace kestro::adapters
