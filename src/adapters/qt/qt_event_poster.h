#pragma once

#include <functional>

#include <QObject>

#include "adapters/qt/event_boundary.h"

namespace kestro::adapters {

/// Posts tasks to the event loop, which runs them in the order of posting.
/// Callable from any thread; the tasks run on the user-interface thread. Tasks
/// that have not run when the poster goes are dropped.
class QtEventPoster {
 public:
  explicit QtEventPoster(EventBoundary& boundary) : boundary_(boundary) {}

  void operator()(std::function<void()> task) {
    QMetaObject::invokeMethod(
        &context_,
        [&boundary = boundary_, task = std::move(task)] {
          boundary.Run(EventBoundary::Cause::kSystem, task);
        },
        Qt::QueuedConnection);
  }

 private:
  EventBoundary& boundary_;
  QObject context_;
};

}  // namespace kestro::adapters
