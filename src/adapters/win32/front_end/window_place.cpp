#include <algorithm>
#include <utility>

#include "adapters/win32/front_end/window.h"
#include "adapters/win32/wide_text.h"
#include "base/scope_value.h"

// The size, the place and the appearance of a window.

namespace kestro::adapters::win32 {
namespace {

using forms::WindowState;

SIZE SizeOf(const RECT& area) { return {area.right - area.left, area.bottom - area.top}; }

SIZE InsideOf(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return SizeOf(area);
}

/// A window without the keyboard in front of all others, those of other programs as well.
void Raise(HWND window, UINT more) {
  constexpr UINT kOnlyOrder = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, kOnlyOrder | more);
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, kOnlyOrder);
}

int ShowCommand(WindowState state, bool activate) {
  switch (state) {
    case WindowState::kMinimized:
      return SW_SHOWMINNOACTIVE;
    case WindowState::kMaximized:
      return SW_SHOWMAXIMIZED;
    case WindowState::kNormal:
      break;
  }
  return activate ? SW_SHOWNORMAL : SW_SHOWNOACTIVATE;
}

}  // namespace

void Window::Appear(bool activate) {
  GiveFirstFocus();
  FitToContent();
  if (form_->placed()) {
    PutInPlace();
  } else if (!has_appeared_) {
    RECT chosen_by_system{};
    GetWindowRect(window(), &chosen_by_system);
    MoveInsideScreen({chosen_by_system.left, chosen_by_system.top});
  }
  has_appeared_ = true;
  ShowWindow(window(), ShowCommand(shown_state_, activate));
  BringToFront(activate);
}

void Window::Disappear() {
  ShowWindow(window(), SW_HIDE);
  Win32EventBoundary::Wake();
}

void Window::BringToFront(bool activate) {
  Raise(window(), 0);
  if (activate && State() != WindowState::kMinimized) SetForegroundWindow(window());
}

void Window::SyncWindow() {
  const bool new_caption = form_->caption() != shown_caption_;
  const bool new_state = form_->window_state() != shown_state_;
  if (new_caption) {
    shown_caption_ = form_->caption();
    SetWindowTextW(window(), ToWide(shown_caption_).c_str());
  }
  if (new_state) {
    shown_state_ = form_->window_state();
    if (IsWindowVisible(window()) != 0) ShowWindow(window(), ShowCommand(shown_state_, false));
  }
  // Nothing else changed: the program has placed the window (where it was, perhaps, before the user
  // moved it).
  if (!new_caption && !new_state && form_->placed()) PutInPlace();
}

// --- sizes ---

/// What the system draws around the inside: negative sizes at the left and top.
RECT Window::Frame() const {
  const auto style =
      static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE)) & ~DWORD{WS_HSCROLL | WS_VSCROLL};
  const auto extended = static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_EXSTYLE));
  return FrameAround({}, style, extended, menus_->bar() != nullptr, fonts_->dpi);
}

/// The largest inside that the screen has room for.
SIZE Window::Room() const {
  const SIZE screen = SizeOf(WorkArea(window()));
  const SIZE frame = SizeOf(Frame());
  return {screen.cx - frame.cx, screen.cy - frame.cy};
}

/// At least the designed size, more when the content needs more; never more than the screen has.
void Window::FitToContent() {
  if (IsZoomed(window()) != 0 || IsIconic(window()) != 0) return LayOut();
  const ContainerLayout content = LayoutOf(form_->body(), Margins::kWindow);
  const SIZE room = Room();
  const SIZE designed{ToPixels(form_->width(), fonts_->dpi), ToPixels(form_->height(), fonts_->dpi)};
  SIZE fitting = has_appeared_ ? InsideOf(window()) : designed;
  const SizeHint wanted = content.Measure();
  fitting.cx = std::min(std::max<LONG>(fitting.cx, wanted.width), room.cx);
  fitting.cy = std::min(std::max<LONG>(fitting.cy, content.HeightFor(fitting.cx)), room.cy);
  const SIZE frame = SizeOf(Frame());
  SetWindowPos(window(), nullptr, 0, 0, fitting.cx + frame.cx, fitting.cy + frame.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  LayOut();
  RECT place{};
  GetWindowRect(window(), &place);
  if (IsWindowVisible(window()) != 0) MoveInsideScreen({place.left, place.top});
}

void Window::LayOut() {
  if (laying_out_ || form_ == nullptr) return;
  const base::ScopeValue laying_out(laying_out_, true);
  const ContainerLayout layout = LayoutOf(form_->body(), Margins::kWindow);
  const SizeHint hint = layout.Measure();
  SIZE inside = InsideOf(window());
  SIZE content{std::max<LONG>(inside.cx, hint.least_width), 0};
  content.cy = std::max<LONG>(
      inside.cy, std::min(layout.HeightFor(content.cx), hint.grows_high ? hint.least_height : hint.height));
  SetScrollBars(content, inside);
  inside = InsideOf(window());
  content.cx = std::max<LONG>(inside.cx, hint.least_width);
  SetWindowPos(content_->window(), nullptr, -scrolled_.x, -scrolled_.y, content.cx,
               std::max(content.cy, inside.cy), SWP_NOZORDER | SWP_NOACTIVATE);
  layout.Place({0, 0, content.cx, std::max(content.cy, inside.cy)});
  RedrawWindow(content_->window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// For screens that are too small for the window.
void Window::SetScrollBars(SIZE content, SIZE inside) {
  const auto set = [this](int bar, LONG whole, LONG page, LONG& position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = static_cast<int>(std::max<LONG>(whole - 1, 0));
    info.nPage = static_cast<UINT>(std::max<LONG>(page, 0));
    position = std::clamp<LONG>(position, 0, std::max<LONG>(whole - page, 0));
    info.nPos = static_cast<int>(position);
    SetScrollInfo(window(), bar, &info, TRUE);
  };
  set(SB_HORZ, content.cx, inside.cx, scrolled_.x);
  set(SB_VERT, content.cy, inside.cy, scrolled_.y);
}

void Window::Scroll(int bar, int request) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window(), bar, &info);
  LONG& position = bar == SB_HORZ ? scrolled_.x : scrolled_.y;
  const int line = fonts_->normal.line();
  const int page = static_cast<int>(info.nPage);
  const int step = request == SB_LINEUP     ? -line
                   : request == SB_LINEDOWN ? line
                   : request == SB_PAGEUP   ? -page
                   : request == SB_PAGEDOWN ? page
                                            : 0;
  const bool dragged = request == SB_THUMBTRACK || request == SB_THUMBPOSITION;
  const LONG wanted = dragged ? info.nTrackPos : position + step;
  position = std::clamp<LONG>(wanted, 0, std::max(info.nMax + 1 - page, 0));
  LayOut();
}

void Window::OnWheel(int delta) {
  for (int turned = 0; turned < std::abs(delta); turned += WHEEL_DELTA) {
    Scroll(SB_VERT, delta > 0 ? SB_LINEUP : SB_LINEDOWN);
  }
}

/// The window cannot be made smaller than its content, unless the screen is.
void Window::LimitSize(MINMAXINFO& limits) const {
  const SizeHint least = LayoutOf(form_->body(), Margins::kWindow).Measure();
  const SIZE room = Room();
  const SIZE frame = SizeOf(Frame());
  limits.ptMinTrackSize.x = std::min<LONG>(least.least_width, room.cx) + frame.cx;
  limits.ptMinTrackSize.y = std::min<LONG>(least.least_height, room.cy) + frame.cy;
}

// --- places ---

void Window::PutInPlace() {
  const RECT work = WorkArea(nullptr);
  MoveInsideScreen(
      {work.left + ToPixels(form_->left(), fonts_->dpi), work.top + ToPixels(form_->top(), fonts_->dpi)});
}

void Window::MoveInsideScreen(POINT wanted) {
  const RECT room = WorkArea(window());
  RECT place{};
  GetWindowRect(window(), &place);
  const SIZE size = SizeOf(place);
  const LONG left = std::clamp(wanted.x, room.left, std::max(room.left, room.right - size.cx));
  const LONG top = std::clamp(wanted.y, room.top, std::max(room.top, room.bottom - size.cy));
  if (left == place.left && top == place.top) return;
  SetWindowPos(window(), nullptr, left, top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

// --- densities and fonts ---

void Window::UseDensity(int dpi, const RECT& suggested) {
  UseFonts(dpi);
  SetWindowPos(window(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  FitToContent();
}

void Window::UseFonts(int dpi) {
  content_->TakeColorAround();
  // The native controls draw with the old ones until they are told the new ones.
  const auto old = std::exchange(fonts_, std::make_unique<Fonts>(dpi));
  for (const auto& binding : bindings_) binding->UseFonts();
}

}  // namespace kestro::adapters::win32
