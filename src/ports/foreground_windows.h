#pragma once

#include <cstdint>

#include "ports/notification_area.h"

namespace kestro::ports {

/// The window functions behind bringing a window to the foreground. On a system
/// where a program cannot take the foreground, SetForegroundWindow raises the
/// window the way that system allows and GetForegroundWindow then reports it.
class ForegroundWindows {
 public:
  virtual ~ForegroundWindows() = default;
  virtual bool SetForegroundWindow(WindowHandle window) = 0;
  [[nodiscard]] virtual WindowHandle GetForegroundWindow() = 0;
  [[nodiscard]] virtual std::uint32_t GetWindowThread(WindowHandle window) = 0;
  virtual void AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) = 0;
  [[nodiscard]] virtual bool IsIconic(WindowHandle window) = 0;
  virtual void ShowWindowCommand(WindowHandle window, int command) = 0;
  /// `insert_after`: -1 topmost, -2 not topmost. Position and size stay with flags 3.
  virtual std::int32_t SetWindowPos(WindowHandle window, std::int32_t insert_after, std::uint32_t flags) = 0;

  static constexpr int kShow = 5;
  static constexpr int kRestore = 9;
};

}  // namespace kestro::ports
