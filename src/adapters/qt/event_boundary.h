#pragma once

#include <exception>
#include <functional>
#include <vector>

class QEventLoop;

namespace kestro::adapters {

/// The one door through which events of the toolkit reach the application.
/// No exception leaves it towards the toolkit's event loop, which could not
/// carry it: base::ProcessEnded ends all loops, and so does any other exception,
/// which is reported on standard error. After that no handler runs any more.
///
/// User-interface thread only.
class EventBoundary {
 public:
  enum class Cause {
    kUser,    // something the user did just now: windows opened by it may take the keyboard
    kSystem,  // a call, a timer, the session
  };

  EventBoundary() = default;
  EventBoundary(const EventBoundary&) = delete;
  EventBoundary& operator=(const EventBoundary&) = delete;

  void Run(Cause cause, const std::function<void()>& handler) noexcept;

  /// Runs a nested loop (a modal window). Throws base::ProcessEnded when the
  /// process ended before or meanwhile.
  void RunLoop(QEventLoop& loop);
  /// Runs the program's event loop until the process ends; its exit status.
  int RunUntilEnded();

  /// base::ProcessEnded when the process has ended.
  void ThrowIfEnded() const;
  /// Like ThrowIfEnded, but throws the unexpected exception itself when one ended it.
  void RethrowEnd() const;
  [[nodiscard]] bool ended() const { return ended_; }

  /// The innermost event being handled was caused by the user.
  [[nodiscard]] bool user_action() const { return !causes_.empty() && causes_.back() == Cause::kUser; }
  /// No handler and no nested loop is on the stack.
  [[nodiscard]] bool idle() const { return causes_.empty() && loops_.empty(); }

 private:
  void End() noexcept;

  std::vector<Cause> causes_;
  std::vector<QEventLoop*> loops_;
  std::exception_ptr failure_;
  bool main_loop_runs_ = false;
  bool ended_ = false;
};

}  // namespace kestro::adapters
