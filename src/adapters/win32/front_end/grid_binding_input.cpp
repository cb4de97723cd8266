#include <algorithm>

#include "adapters/win32/front_end/grid_binding.h"

// What the user does with a grid.

namespace kestro::adapters::win32 {

using forms::Grid;

LRESULT CALLBACK GridBinding::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR /*id*/, DWORD_PTR data) noexcept {
  auto* grid = reinterpret_cast<GridBinding*>(data);
  if (!grid->detached_ && grid->Handle(message, wparam, lparam)) return 0;
  return DefSubclassProc(window, message, wparam, lparam);
}

bool GridBinding::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
      SetFocus(window());
      PressAt(RowAt(lparam));
      return true;
    case WM_LBUTTONDBLCLK:
      DoubleClickAt(RowAt(lparam), true);
      return true;
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      DoubleClickAt(RowAt(lparam), false);
      return true;
    case WM_KEYDOWN: {
      if (!UsesKey(wparam)) return false;
      constexpr LPARAM kWasDown = LPARAM{1} << 30;
      PressKey(wparam, (lparam & kWasDown) != 0);
      return true;
    }
    case WM_CHAR:  // a search would look through all rows
      return true;
    default:
      return false;
  }
}

std::int64_t GridBinding::RowAt(LPARAM point) const {
  LVHITTESTINFO hit{};
  hit.pt = {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
  return Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)) < 0 ? Grid::kNoRow : hit.iItem;
}

void GridBinding::PressAt(std::int64_t row) {
  last_pressed_ = row;
  owner().UserActed(grid_, [this, row] { grid_.PressRow(row); });
}

void GridBinding::DoubleClickAt(std::int64_t row, bool left_button) {
  if (row != last_pressed_ || !left_button) return PressAt(row);
  if (row == Grid::kNoRow || row != SelectedRow()) return;
  owner().UserActed(grid_, [this] { grid_.DoubleClick(); });
}

std::optional<std::int64_t> GridBinding::MovedRow(WPARAM key) const {
  const std::int64_t selected = SelectedRow();
  const std::int64_t page = std::max<std::int64_t>(Send(LVM_GETCOUNTPERPAGE) - 1, 1);
  const std::int64_t last = RowCount() - 1;
  if (last < 0) return std::nullopt;
  switch (key) {
    case VK_UP:
      return std::max<std::int64_t>(selected - 1, 0);
    case VK_DOWN:
      return std::min(selected + 1, last);
    case VK_PRIOR:
      return std::max<std::int64_t>(selected - page, 0);
    case VK_NEXT:
      return std::min(selected + page, last);
    case VK_HOME:
      return 0;
    case VK_END:
      return last;
    default:
      return std::nullopt;
  }
}

bool GridBinding::UsesKey(WPARAM key) const {
  return key == VK_RETURN ? SelectedRow() != Grid::kNoRow : MovedRow(key).has_value();
}

void GridBinding::PressKey(WPARAM key, bool repeated) {
  if (key == VK_RETURN) {
    if (!repeated) owner().UserActed(grid_, [this] { grid_.DoubleClick(); });
  } else if (const auto row = MovedRow(key); row && *row != SelectedRow()) {
    PressAt(*row);
  }
}

LRESULT GridBinding::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      TellCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_COLUMNCLICK: {
      const int column = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
      owner().UserActed(grid_, [this, column] { grid_.PressHeader(column); });
      return 0;
    }
    default:
      return 0;
  }
}

}  // namespace kestro::adapters::win32
