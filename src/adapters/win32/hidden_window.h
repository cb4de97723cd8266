#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>

namespace kestro::adapters {

/// A top-level window that is never shown: the address at which the system and
/// other programs reach this one. (A message-only window would not hear what is
/// told to everybody, the end of the session for instance.)
///
/// Belongs to the thread that makes it; handlers run there and must not throw.
class HiddenWindow {
 public:
  using Handler = std::function<LRESULT(WPARAM wparam, LPARAM lparam)>;

  /// `class_name` is what other programs find it by. Raises base::RuntimeError (51).
  explicit HiddenWindow(std::wstring class_name);
  ~HiddenWindow();
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  [[nodiscard]] HWND handle() const { return window_; }
  /// What is to be done with a message; an empty handler gives it back to the system.
  void On(UINT message, Handler handler);

 private:
  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);

  std::wstring class_name_;
  HWND window_ = nullptr;
  std::map<UINT, Handler> handlers_;
};

}  // namespace kestro::adapters
