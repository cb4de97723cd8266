#pragma once

#include "adapters/qt/qt_form_host.h"
#include "ports/foreground_windows.h"

namespace kestro::adapters {

/// The foreground among the windows of a QtFormHost. A shown window that asks
/// for it is raised; it takes the keyboard only when the user's own action
/// brought it up. All windows belong to one thread.
class QtForegroundWindows final : public ports::ForegroundWindows {
 public:
  explicit QtForegroundWindows(QtFormHost& host) : host_(host) {}

  bool SetForegroundWindow(ports::WindowHandle window) override { return host_.BringToFront(window); }
  [[nodiscard]] ports::WindowHandle GetForegroundWindow() override { return host_.FrontWindow(); }
  [[nodiscard]] std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return host_.Window(window) == nullptr ? 0 : 1;
  }
  void AttachThreadInput(std::uint32_t /*from*/, std::uint32_t /*to*/, bool /*attach*/) override {}
  [[nodiscard]] bool IsIconic(ports::WindowHandle window) override;
  void ShowWindowCommand(ports::WindowHandle window, int command) override;
  /// Being topmost for a moment is what raising is here.
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                            std::uint32_t flags) override;

 private:
  QtFormHost& host_;
};

}  // namespace kestro::adapters
