#include "adapters/win32/front_end/win32_event_boundary.h"

#include "base/scope_value.h"

namespace kestro::adapters {

void Win32EventBoundary::LeaveLoops() noexcept {
  if (foreign_loops_ > 0) PostQuitMessage(0);
  Wake();
}

void Win32EventBoundary::Wake() { PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0); }

void Win32EventBoundary::Dispatch(const MSG& message) {
  if (filter_ && filter_(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Win32EventBoundary::RunWhile(const std::function<bool()>& goes_on) {
  ThrowIfEnded();
  {
    const base::ScopeValue deeper(loops_, loops_ + 1);
    MSG message{};
    while (!ended() && goes_on() && GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  }
  ThrowIfEnded();
}

int Win32EventBoundary::RunUntilEnded() {
  MSG message{};
  while (!ended() && GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  return exit_status();
}

void Win32EventBoundary::DispatchWaiting() {
  MSG message{};
  while (!ended() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message != WM_QUIT) Dispatch(message);
  }
}

Win32EventBoundary::ForeignLoop::ForeignLoop(Win32EventBoundary& boundary) : boundary_(boundary) {
  ++boundary_.foreign_loops_;
}

Win32EventBoundary::ForeignLoop::~ForeignLoop() {
  if (--boundary_.foreign_loops_ > 0) return;
  // The request to end was for that loop only; what it left would end the next one.
  MSG quit{};
  PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

}  // namespace kestro::adapters
