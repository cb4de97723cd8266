#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <vector>

namespace kestro::adapters {

/// The one door through which window messages reach the application. No
/// exception leaves it towards the system, which could not carry it:
/// base::ProcessEnded ends all loops, and so does any other exception, which is
/// reported on standard error. After that no handler runs any more.
///
/// User-interface thread only.
class Win32EventBoundary {
 public:
  enum class Cause {
    kUser,    // something the user did just now: windows opened by it may take the keyboard
    kSystem,  // a call, a timer, the session
  };
  /// Looks at a message before it is dispatched; true when nothing is left to do with it.
  using Filter = std::function<bool(const MSG&)>;

  Win32EventBoundary() = default;
  Win32EventBoundary(const Win32EventBoundary&) = delete;
  Win32EventBoundary& operator=(const Win32EventBoundary&) = delete;

  void Run(Cause cause, const std::function<void()>& handler) noexcept;

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

  /// base::ProcessEnded when the process has ended.
  void ThrowIfEnded() const;
  /// Like ThrowIfEnded, but throws the unexpected exception itself when one ended it.
  void RethrowEnd() const;
  [[nodiscard]] bool ended() const { return ended_; }

  /// The innermost event being handled was caused by the user.
  [[nodiscard]] bool user_action() const { return !causes_.empty() && causes_.back() == Cause::kUser; }
  /// No handler and no nested loop is on the stack.
  [[nodiscard]] bool idle() const { return causes_.empty() && loops_ == 0; }

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
  void End() noexcept;
  void Dispatch(const MSG& message);

  std::vector<Cause> causes_;
  Filter filter_;
  std::exception_ptr failure_;
  int loops_ = 0;
  int foreign_loops_ = 0;
  bool ended_ = false;
};

}  // namespace kestro::adapters
