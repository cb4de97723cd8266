#include "adapters/qt/qt_foreground_windows.h"

namespace kestro::adapters {
namespace {

constexpr std::int32_t kTopmost = -1;

}  // namespace

bool QtForegroundWindows::IsIconic(ports::WindowHandle window) {
  const QtWindow* found = host_.Window(window);
  return found != nullptr && found->isMinimized();
}

void QtForegroundWindows::ShowWindowCommand(ports::WindowHandle window, int command) {
  QtWindow* found = host_.Window(window);
  if (found == nullptr || found->form() == nullptr) return;
  if (command == kRestore) found->form()->SetWindowState(forms::WindowState::kNormal);
  if (found->isVisible()) found->raise();
}

std::int32_t QtForegroundWindows::SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                                               std::uint32_t /*flags*/) {
  QtWindow* found = host_.Window(window);
  if (found == nullptr) return 0;
  if (insert_after == kTopmost && found->isVisible()) found->raise();
  return 1;
}

}  // namespace kestro::adapters
