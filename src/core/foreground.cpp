#include "core/foreground.h"

namespace kestro::core {
namespace {

constexpr std::int32_t kTopmost = -1;
constexpr std::int32_t kNotTopmost = -2;
constexpr std::uint32_t kKeepPositionAndSize = 3;

}  // namespace

bool ForceFore::IsForeground(ports::WindowHandle window) { return windows_.GetForegroundWindow() == window; }

void ForceFore::SetForegroundFromItsThread(ports::WindowHandle window) {
  const std::uint32_t foreground_thread = windows_.GetWindowThread(windows_.GetForegroundWindow());
  const std::uint32_t own_thread = windows_.GetWindowThread(window);
  if (foreground_thread == own_thread) {
    windows_.SetForegroundWindow(window);
    return;
  }
  windows_.AttachThreadInput(foreground_thread, own_thread, true);
  windows_.SetForegroundWindow(window);
  windows_.AttachThreadInput(foreground_thread, own_thread, false);
}

bool ForceFore::ForceForegroundWindow(ports::WindowHandle window) {
  return procedure_.Outermost(
      "ForceForegroundWindow",
      [&] {
        windows_.SetForegroundWindow(window);
        if (IsForeground(window)) return true;
        SetForegroundFromItsThread(window);
        windows_.ShowWindowCommand(window, windows_.IsIconic(window) ? ports::ForegroundWindows::kRestore
                                                                     : ports::ForegroundWindows::kShow);
        if (IsForeground(window)) return true;
        StayOnTop(window, true);
        StayOnTop(window, false);
        return IsForeground(window);
      },
      [](const base::RuntimeError&) { return false; });
}

std::int32_t ForceFore::StayOnTop(ports::WindowHandle window, bool on_top) {
  return functions_("StayOnTop", [&] {
    return windows_.SetWindowPos(window, on_top ? kTopmost : kNotTopmost, kKeepPositionAndSize);
  });
}

}  // namespace kestro::core
