#include "adapters/win32/front_end/control_binding.h"

#include <stdexcept>
#include <system_error>

#include "adapters/win32/front_end/native_text.h"
#include "base/scope_value.h"

namespace kestro::adapters::win32 {

void ControlBinding::Create(HWND parent, const wchar_t* window_class, DWORD style, DWORD extended_style) {
  window_ = CreateWindowExW(extended_style, window_class, L"", style | WS_CHILD, 0, 0, 0, 0, parent, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "the control " + control_.name());
  }
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(fonts().normal.get()), FALSE);
}

void ControlBinding::UseFonts() { Send(WM_SETFONT, reinterpret_cast<WPARAM>(fonts().normal.get()), TRUE); }

void ControlBinding::Sync() {
  const base::ScopeValue syncing(syncing_, true);
  SyncContent();
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
  if (((style & WS_DISABLED) == 0) != control_.enabled())
    EnableWindow(window_, control_.enabled() ? TRUE : FALSE);
  if (((style & WS_VISIBLE) != 0) != control_.visible()) {
    ShowWindow(window_, control_.visible() ? SW_SHOWNA : SW_HIDE);
  }
}

forms::ControlReading ControlBinding::Read() const {
  forms::ControlReading reading;
  reading.name = ReadingName(control_);
  ReadContent(reading);
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
  reading.hidden = (style & WS_VISIBLE) == 0;
  reading.disabled = (style & WS_DISABLED) != 0;
  return reading;
}

void ControlBinding::Place(const RECT& place) {
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

bool ControlBinding::Shown() const {
  return (static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)) & WS_VISIBLE) != 0;
}

std::string ReadingName(const forms::Control& control) {
  if (!control.array_index()) return control.name();
  return control.name() + "(" + std::to_string(*control.array_index()) + ")";
}

}  // namespace kestro::adapters::win32
