#include "adapters/win32/front_end/grid_binding.h"
#include "adapters/win32/front_end/tool_bar_binding.h"
#include "adapters/win32/front_end/user_events.h"
#include "adapters/win32/front_end/win32_front_end_driver.h"

// What the user does with grids, tool bars and the keyboard.

namespace kestro::adapters {

using forms::Form;
using forms::Grid;
using win32::GridBinding;

bool Win32FrontEndDriver::PressRow(Form& form, Grid& grid, std::int64_t row) {
  auto* view = dynamic_cast<GridBinding*>(Reachable(form, grid));
  if (view == nullptr || row < Grid::kNoRow || row >= view->RowCount()) return false;
  const auto point = view->BringIntoSight(row);
  if (!point) return false;
  host_.Window(form)->FocusControl(grid);
  win32::PressMouse(view->window(), *point);
  return Done();
}

bool Win32FrontEndDriver::DoubleClickRow(Form& form, Grid& grid, std::int64_t row) {
  if (!PressRow(form, grid, row)) return false;
  auto* view = dynamic_cast<GridBinding*>(Reachable(form, grid));
  if (view == nullptr || row >= view->RowCount()) return true;
  const auto point = view->BringIntoSight(row);
  if (point) win32::DoubleClickMouse(view->window(), *point);
  return Done();
}

bool Win32FrontEndDriver::PressHeader(Form& form, Grid& grid, int column) {
  auto* view = dynamic_cast<GridBinding*>(Reachable(form, grid));
  if (view == nullptr || column < 0 || column >= view->ColumnCount()) return false;
  host_.Window(form)->FocusControl(grid);
  win32::PressMouse(view->header(), view->HeaderPoint(column));
  return Done();
}

bool Win32FrontEndDriver::PressTool(Form& form, forms::ToolBar& bar, int number) {
  const auto* tools = dynamic_cast<const win32::ToolBarBinding*>(Reachable(form, bar));
  if (tools == nullptr || !tools->CanPress(number)) return false;
  tools->Press(number);
  return Done();
}

bool Win32FrontEndDriver::PressKey(Form& form, const forms::Key& key) {
  if (!WindowReachable(form) || IsWindowVisible(host_.Window(form)->window()) == 0) return false;
  host_.BringToFront(form.handle());
  SetActiveWindow(host_.Window(form)->window());
  Settle();
  const win32::Window* window = host_.Window(form);
  if (window == nullptr || IsWindowVisible(window->window()) == 0) return true;
  const forms::Control* focus = window->FocusedControl();
  const win32::ControlBinding* binding = focus == nullptr ? nullptr : window->Binding(*focus);
  HWND target = binding == nullptr ? window->window() : binding->window();
  // The keyboard is in the field of an editable list, not on the list itself.
  if (const HWND focused = GetFocus(); IsChild(target, focused) != 0) target = focused;
  const win32::HeldModifiers held(key);
  win32::PostKey(target, key);
  Settle();
  return Done();
}

}  // namespace kestro::adapters
