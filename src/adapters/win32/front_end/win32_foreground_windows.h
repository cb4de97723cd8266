#pragma once

#include "adapters/win32/front_end/win32_form_host.h"
#include "ports/foreground_windows.h"

namespace kestro::adapters {

/// The foreground among the windows of a Win32FormHost. A shown window that asks
/// for it is raised; it takes the keyboard only when the user's own action
/// brought it up. All windows belong to one thread.
class Win32ForegroundWindows final : public ports::ForegroundWindows {
 public:
  explicit Win32ForegroundWindows(Win32FormHost& host) : host_(host) {}

  bool SetForegroundWindow(ports::WindowHandle window) override { return host_.BringToFront(window); }
  [[nodiscard]] ports::WindowHandle GetForegroundWindow() override { return host_.FrontWindow(); }
  [[nodiscard]] std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return host_.Window(window) == nullptr ? 0 : 1;
  }
  void AttachThreadInput(std::uint32_t /*from*/, std::uint32_t /*to*/, bool /*attach*/) override {}
  [[nodiscard]] bool IsIconic(ports::WindowHandle window) override;
  void ShowWindowCommand(ports::WindowHandle window, int command) override;
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                            std::uint32_t flags) override;

 private:
  Win32FormHost& host_;
};

}  // namespace kestro::adapters
