#pragma once

#include <vector>

#include "forms/event_door.h"

class QEventLoop;

namespace kestro::adapters {

/// The door for the events of Qt, with the program's event loops.
class EventBoundary final : public forms::EventDoor {
 public:
  /// Runs a nested loop (a modal window). Throws base::ProcessEnded when the
  /// process ended before or meanwhile.
  void RunLoop(QEventLoop& loop);
  /// Runs the program's event loop until the process ends; its exit status.
  int RunUntilEnded();

  /// No handler and no nested loop is on the stack.
  [[nodiscard]] bool idle() const { return !handles_event() && loops_.empty(); }

 private:
  void LeaveLoops() noexcept override;

  std::vector<QEventLoop*> loops_;
  bool main_loop_runs_ = false;
};

}  // namespace kestro::adapters
