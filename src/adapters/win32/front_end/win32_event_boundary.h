#pragma once

#include <windows.h>

#include <functional>

#include "forms/event_door.h"

namespace kestro::adapters {

/// The door for window messages, with the program's message loops.
class Win32EventBoundary final : public forms::EventDoor {
 public:
  /// Looks at a message before it is dispatched; true when nothing is left to do with it.
  using Filter = std::function<bool(const MSG&)>;

  /// Dispatches messages as long as the condition holds (a modal window). Throws
  /// base::ProcessEnded when the process ended before or meanwhile.
  void RunWhile(const std::function<bool()>& goes_on);
  /// Runs the program's message loop until the process ends; its exit status.
  int RunUntilEnded();
  /// Dispatches what is waiting. Throws nothing.
  void DispatchWaiting();
  /// Makes a waiting loop look at its condition.
  static void Wake();
  void SetFilter(Filter filter) { filter_ = std::move(filter); }

  /// No handler and no nested loop is on the stack.
  [[nodiscard]] bool idle() const { return !handles_event() && loops_ == 0; }

  /// Stands around a call of the system that runs a message loop of its own (a
  /// message box, a menu): when the process ends meanwhile, that loop ends, too.
  class ForeignLoop {
   public:
    explicit ForeignLoop(Win32EventBoundary& boundary);
    ~ForeignLoop();
    ForeignLoop(const ForeignLoop&) = delete;
    ForeignLoop& operator=(const ForeignLoop&) = delete;

   private:
    Win32EventBoundary& boundary_;
  };

 private:
  void LeaveLoops() noexcept override;
  void Dispatch(const MSG& message);

  Filter filter_;
  int loops_ = 0;
  int foreign_loops_ = 0;
};

}  // namespace kestro::adapters
