#pragma once

namespace kestro::ports {

/// Knows whether the user runs the program already.
class InstanceGuard {
 public:
  virtual ~InstanceGuard() = default;
  /// False once this process holds the place, which it keeps until it ends.
  [[nodiscard]] virtual bool AnotherInstanceRuns() = 0;
  /// Asks the running one to come to the front; nothing happens when it does not answer.
  virtual void BringOtherToFront() = 0;
};

}  // namespace kestro::ports
