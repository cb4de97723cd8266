#include "adapters/win32/front_end/panel.h"

#include <system_error>

namespace kestro::adapters::win32 {
namespace {

constexpr const wchar_t* kPanelClass = L"KestroPanel";

/// Does nothing when the class is there already.
void RegisterPanelClass(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = kPanelClass;
  RegisterClassExW(&description);
}

/// The panel of that window, nullptr for any other window.
const Panel* PanelOf(HWND window) {
  wchar_t name[32]{};
  GetClassNameW(window, name, 32);
  if (lstrcmpW(name, kPanelClass) != 0) return nullptr;
  return reinterpret_cast<const Panel*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

COLORREF ColorAround(HWND window) {
  for (HWND place = window; place != nullptr; place = GetAncestor(place, GA_PARENT)) {
    if (const Panel* panel = PanelOf(place)) return panel->color();
  }
  return GetSysColor(COLOR_BTNFACE);
}

}  // namespace

Panel::Panel(HWND parent, PanelListener& listener) : listener_(listener) {
  RegisterPanelClass(&Panel::Procedure);
  SetColor(ColorAround(parent));
  // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): the class must be there first
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, kPanelClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0,
                            0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr), this);
  if (window_ == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "a window's panel");
  }
}

void Panel::TakeColorAround() { SetColor(ColorAround(GetAncestor(window_, GA_PARENT))); }

void Panel::SetColor(COLORREF color) {
  color_ = color;
  brush_.reset(CreateSolidBrush(color));
  if (window_ != nullptr) InvalidateRect(window_, nullptr, TRUE);
}

LRESULT CALLBACK Panel::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    auto* panel = static_cast<Panel*>(creation->lpCreateParams);
    panel->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(panel));
  }
  auto* panel = reinterpret_cast<Panel*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return panel == nullptr ? DefWindowProcW(window, message, wparam, lparam)
                          : panel->Handle(message, wparam, lparam);
}

LRESULT Panel::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      if (lparam != 0) listener_.OnCommand(reinterpret_cast<HWND>(lparam), LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_NOTIFY:
      return listener_.OnNotify(*reinterpret_cast<NMHDR*>(lparam));
    case WM_DRAWITEM:
      listener_.OnDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
      return TRUE;
    case WM_MOUSEWHEEL:
      listener_.OnWheel(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      return ColorControl(reinterpret_cast<HDC>(wparam), reinterpret_cast<HWND>(lparam));
    case WM_ERASEBKGND: {
      RECT area{};
      GetClientRect(window_, &area);
      FillRect(reinterpret_cast<HDC>(wparam), &area, brush_.get());
      return 1;
    }
    default:
      return DefWindowProcW(window_, message, wparam, lparam);
  }
}

/// A field that cannot be typed into keeps the look of a field.
LRESULT Panel::ColorControl(HDC dc, HWND control) const {
  const bool field = (GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0;
  if (field) {
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
  }
  SetBkColor(dc, color_);
  SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
  return reinterpret_cast<LRESULT>(brush_.get());
}

}  // namespace kestro::adapters::win32
