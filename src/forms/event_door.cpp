#include "forms/event_door.h"

#include <iostream>

#include "base/runtime_error.h"

namespace kestro::forms {
namespace {

void Report(const char* description) noexcept {
  try {
    std::cerr << "unexpected error: " << description << std::endl;
  } catch (...) {  // standard error is gone: nobody is left to tell
  }
}

}  // namespace

void EventDoor::Run(Cause cause, const std::function<void()>& handler) noexcept {
  if (ended_) return;
  causes_.push_back(cause);
  try {
    handler();
  } catch (const base::ProcessEnded&) {
    End();
  } catch (const std::exception& error) {
    Fail(error.what());
  } catch (...) {
    Fail("an exception of an unknown type");
  }
  causes_.pop_back();
}

void EventDoor::Fail(const char* description) noexcept {
  failure_ = std::current_exception();
  Report(description);
  End();
}

void EventDoor::End() noexcept {
  ended_ = true;
  LeaveLoops();
}

void EventDoor::ThrowIfEnded() const {
  if (ended_) throw base::ProcessEnded{};
}

void EventDoor::RethrowEnd() const {
  if (failure_) std::rethrow_exception(failure_);
  ThrowIfEnded();
}

}  // namespace kestro::forms
