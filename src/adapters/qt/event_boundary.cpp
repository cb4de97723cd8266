#include "adapters/qt/event_boundary.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace kestro::adapters {

void EventBoundary::LeaveLoops() noexcept {
  for (QEventLoop* loop : loops_) loop->exit();
  if (main_loop_runs_) QCoreApplication::exit(exit_status());
}

void EventBoundary::RunLoop(QEventLoop& loop) {
  ThrowIfEnded();
  loops_.push_back(&loop);
  loop.exec();
  loops_.pop_back();
  ThrowIfEnded();
}

int EventBoundary::RunUntilEnded() {
  if (!ended()) {
    main_loop_runs_ = true;
    QCoreApplication::exec();
    main_loop_runs_ = false;
  }
  return exit_status();
}

}  // namespace kestro::adapters
