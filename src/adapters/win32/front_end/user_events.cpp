#include "adapters/win32/front_end/user_events.h"

#include <algorithm>
#include <iterator>

#include "adapters/win32/front_end/keys.h"

namespace kestro::adapters::win32 {
namespace {

LPARAM PointOf(POINT where) { return MAKELPARAM(where.x, where.y); }

void Report(HWND control, int notification) {
  const auto id = static_cast<WORD>(GetDlgCtrlID(control));
  SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(id, notification),
               reinterpret_cast<LPARAM>(control));
}

}  // namespace

void PressMouse(HWND window, POINT where) {
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, PointOf(where));
  SendMessageW(window, WM_LBUTTONUP, 0, PointOf(where));
}

void DoubleClickMouse(HWND window, POINT where) {
  SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, PointOf(where));
  SendMessageW(window, WM_LBUTTONUP, 0, PointOf(where));
}

void TypeOver(HWND field, const std::wstring& text) {
  SendMessageW(field, EM_SETSEL, 0, -1);
  SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void ChooseItem(HWND list, int index) {
  SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  Report(list, CBN_SELCHANGE);
}

HeldModifiers::HeldModifiers(const forms::Key& key) {
  GetKeyboardState(before_);
  BYTE state[256];
  std::copy(std::begin(before_), std::end(before_), std::begin(state));
  constexpr BYTE kDown = 0x80;
  state[VK_CONTROL] = state[VK_LCONTROL] = key.control ? kDown : 0;
  state[VK_MENU] = state[VK_LMENU] = key.alt ? kDown : 0;
  state[VK_SHIFT] = state[VK_LSHIFT] = key.shift ? kDown : 0;
  SetKeyboardState(state);
}

HeldModifiers::~HeldModifiers() { SetKeyboardState(before_); }

void PostKey(HWND window, const forms::Key& key) {
  const WORD code = VirtualKey(key);
  const LPARAM place = LPARAM{1} | (static_cast<LPARAM>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC)) << 16) |
                       (key.alt ? LPARAM{1} << 29 : 0);
  constexpr auto kReleased = static_cast<LPARAM>(0xC0000000U);
  PostMessageW(window, key.alt ? WM_SYSKEYDOWN : WM_KEYDOWN, code, place);
  PostMessageW(window, key.alt ? WM_SYSKEYUP : WM_KEYUP, code, place | kReleased);
}

}  // namespace kestro::adapters::win32
