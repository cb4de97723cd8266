#include "adapters/win32/hidden_window.h"

#include <utility>

#include "adapters/win32/system_error.h"

namespace kestro::adapters {

HiddenWindow::HiddenWindow(std::wstring class_name) : class_name_(std::move(class_name)) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = &HiddenWindow::WindowProcedure;
  description.hInstance = ::GetModuleHandleW(nullptr);
  description.lpszClassName = class_name_.c_str();
  // Registered already when a window of the name was there before.
  if (::RegisterClassExW(&description) == 0 && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
    throw base::RuntimeError(base::kInternalError, SystemErrorText(::GetLastError()));
  }
  window_ = ::CreateWindowExW(WS_EX_TOOLWINDOW, class_name_.c_str(), class_name_.c_str(), WS_POPUP, 0, 0, 0,
                              0, nullptr, nullptr, description.hInstance, nullptr);
  if (window_ == nullptr) throw base::RuntimeError(base::kInternalError, SystemErrorText(::GetLastError()));
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HiddenWindow::~HiddenWindow() {
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  ::DestroyWindow(window_);
}

void HiddenWindow::On(UINT message, Handler handler) { handlers_[message] = std::move(handler); }

LRESULT CALLBACK HiddenWindow::WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const self = reinterpret_cast<HiddenWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  return self == nullptr ? ::DefWindowProcW(window, message, wparam, lparam)
                         : self->Handle(message, wparam, lparam);
}

LRESULT HiddenWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = window_;
  const auto found = handlers_.find(message);
  if (found == handlers_.end() || !found->second) return ::DefWindowProcW(window, message, wparam, lparam);
  const Handler handler = found->second;  // survives being replaced meanwhile
  return handler(wparam, lparam);
}

}  // namespace kestro::adapters
