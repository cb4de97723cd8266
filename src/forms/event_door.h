#pragma once

#include <exception>
#include <functional>
#include <vector>

namespace kestro::forms {

/// The one door through which events of a toolkit reach the application. No
/// exception leaves it towards the toolkit's event loop, which could not carry
/// it: base::ProcessEnded ends all loops, and so does any other exception, which
/// is reported on standard error. After that no handler runs any more.
///
/// User-interface thread only.
class EventDoor {
 public:
  enum class Cause {
    kUser,    // something the user did just now: windows opened by it may take the keyboard
    kSystem,  // a call, a timer, the session
  };

  virtual ~EventDoor() = default;
  EventDoor(const EventDoor&) = delete;
  EventDoor& operator=(const EventDoor&) = delete;

  void Run(Cause cause, const std::function<void()>& handler) noexcept;

  /// base::ProcessEnded when the process has ended.
  void ThrowIfEnded() const;
  /// Like ThrowIfEnded, but throws the unexpected exception itself when one ended it.
  void RethrowEnd() const;
  [[nodiscard]] bool ended() const { return ended_; }

  /// The innermost event being handled was caused by the user.
  [[nodiscard]] bool user_action() const { return !causes_.empty() && causes_.back() == Cause::kUser; }

 protected:
  EventDoor() = default;

  /// Makes every event loop of the program return.
  virtual void LeaveLoops() noexcept = 0;
  [[nodiscard]] bool handles_event() const { return !causes_.empty(); }
  [[nodiscard]] int exit_status() const { return failure_ ? 1 : 0; }

 private:
  void Fail(const char* description) noexcept;
  void End() noexcept;

  std::vector<Cause> causes_;
  std::exception_ptr failure_;
  bool ended_ = false;
};

}  // namespace kestro::forms
