#include "adapters/win32/front_end/win32_event_boundary.h"

#include <iostream>

#include "base/runtime_error.h"
#include "base/scope_value.h"

namespace kestro::adapters {
namespace {

void Report(const char* description) noexcept {
  try {
    std::cerr << "unexpected error: " << description << std::endl;
  } catch (...) {  // standard error is gone: nobody is left to tell
  }
}

}  // namespace

void Win32EventBoundary::Run(Cause cause, const std::function<void()>& handler) noexcept {
  if (ended_) return;
  causes_.push_back(cause);
  try {
    handler();
  } catch (const base::ProcessEnded&) {
    End();
  } catch (const std::exception& error) {
    failure_ = std::current_exception();
    Report(error.what());
    End();
  } catch (...) {
    failure_ = std::current_exception();
    Report("an exception of an unknown type");
    End();
  }
  causes_.pop_back();
}

void Win32EventBoundary::End() noexcept {
  ended_ = true;
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
    while (!ended_ && goes_on() && GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  }
  ThrowIfEnded();
}

int Win32EventBoundary::RunUntilEnded() {
  MSG message{};
  while (!ended_ && GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  return failure_ ? 1 : 0;
}

void Win32EventBoundary::DispatchWaiting() {
  MSG message{};
  while (!ended_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message != WM_QUIT) Dispatch(message);
  }
}

void Win32EventBoundary::ThrowIfEnded() const {
  if (ended_) throw base::ProcessEnded{};
}

void Win32EventBoundary::RethrowEnd() const {
  if (ended_ && failure_) std::rethrow_exception(failure_);
  ThrowIfEnded();
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
