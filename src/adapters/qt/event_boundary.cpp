#include "adapters/qt/event_boundary.h"

#include <iostream>

#include <QCoreApplication>
#include <QEventLoop>

#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

void Report(const char* description) noexcept {
  try {
    std::cerr << "unexpected error: " << description << std::endl;
  } catch (...) {  // standard error is gone: nobody is left to tell
  }
}

}  // namespace

void EventBoundary::Run(Cause cause, const std::function<void()>& handler) noexcept {
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

void EventBoundary::End() noexcept {
  ended_ = true;
  for (QEventLoop* loop : loops_) loop->exit();
  if (main_loop_runs_) QCoreApplication::exit(failure_ ? 1 : 0);
}

void EventBoundary::RunLoop(QEventLoop& loop) {
  ThrowIfEnded();
  loops_.push_back(&loop);
  loop.exec();
  loops_.pop_back();
  ThrowIfEnded();
}

int EventBoundary::RunUntilEnded() {
  if (!ended_) {
    main_loop_runs_ = true;
    QCoreApplication::exec();
    main_loop_runs_ = false;
  }
  return failure_ ? 1 : 0;
}

void EventBoundary::ThrowIfEnded() const {
  if (ended_) throw base::ProcessEnded{};
}

void EventBoundary::RethrowEnd() const {
  if (ended_ && failure_) std::rethrow_exception(failure_);
  ThrowIfEnded();
}

}  // namespace kestro::adapters
