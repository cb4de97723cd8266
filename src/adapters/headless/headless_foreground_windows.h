#pragma once

#include "adapters/headless/headless_form_host.h"
#include "ports/foreground_windows.h"

namespace kestro::adapters {

/// The foreground of a HeadlessFormHost: a shown window that asks for it gets
/// it. All windows belong to one thread.
class HeadlessForegroundWindows final : public ports::ForegroundWindows {
 public:
  explicit HeadlessForegroundWindows(HeadlessFormHost& host) : host_(host) {}

  bool SetForegroundWindow(ports::WindowHandle window) override {
    forms::Form* form = host_.FindWindow(window);
    return form != nullptr && host_.BringToFront(*form);
  }
  [[nodiscard]] ports::WindowHandle GetForegroundWindow() override {
    const forms::Form* form = host_.active_window();
    return form == nullptr ? 0 : form->handle();
  }
  [[nodiscard]] std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return host_.FindWindow(window) == nullptr ? 0 : 1;
  }
  void AttachThreadInput(std::uint32_t /*from*/, std::uint32_t /*to*/, bool /*attach*/) override {}
  [[nodiscard]] bool IsIconic(ports::WindowHandle window) override {
    const forms::Form* form = host_.FindWindow(window);
    return form != nullptr && form->window_state() == forms::WindowState::kMinimized;
  }
  void ShowWindowCommand(ports::WindowHandle window, int command) override {
    forms::Form* form = host_.FindWindow(window);
    if (form != nullptr && command == kRestore) form->SetWindowState(forms::WindowState::kNormal);
  }
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t /*insert_after*/,
                            std::uint32_t /*flags*/) override {
    return host_.FindWindow(window) == nullptr ? 0 : 1;
  }

 private:
  HeadlessFormHost& host_;
};

}  // namespace kestro::adapters
