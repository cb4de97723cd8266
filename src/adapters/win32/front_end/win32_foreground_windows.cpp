#include "adapters/win32/front_end/win32_foreground_windows.h"

namespace kestro::adapters {

bool Win32ForegroundWindows::IsIconic(ports::WindowHandle window) {
  const win32::Window* found = host_.Window(window);
  return found != nullptr && found->State() == forms::WindowState::kMinimized;
}

void Win32ForegroundWindows::ShowWindowCommand(ports::WindowHandle window, int command) {
  win32::Window* found = host_.Window(window);
  if (found == nullptr || found->form() == nullptr) return;
  if (command == kRestore) found->form()->SetWindowState(forms::WindowState::kNormal);
}

std::int32_t Win32ForegroundWindows::SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                                                  std::uint32_t flags) {
  const HWND found = host_.NativeHandle(window);
  if (found == nullptr) return 0;
  // Orders its windows only: which of them has the keyboard stays.
  const auto after = reinterpret_cast<HWND>(static_cast<INT_PTR>(insert_after));
  const BOOL done =
      ::SetWindowPos(found, after, 0, 0, 0, 0, flags | SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  return done != 0 ? 1 : 0;
}

}  // namespace kestro::adapters
