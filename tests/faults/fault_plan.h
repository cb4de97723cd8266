#pragma once

#include <cstdint>
#include <string_view>

namespace kestro::faults {

/// The ports that can be told to fail.
enum class Port {
  kLineFunctions,
  kSettings,
  kFiles,
  kNotificationArea,
  kMessageBoxes,
  kFileDialogs,
  kDialling,
  kDatabase,
  kClipboard,
  kShellExecute,
  kForeground,
  kLog,
};

[[nodiscard]] std::string_view NameOf(Port port);

/// What is raised where a failure is raised: the port's own error, or the system's for want of memory.
enum class Raised { kError, kBadAlloc };

/// Counts the calls of one port and lets the n-th one fail.
class FaultPlan {
 public:
  /// `step` counts from 1; 0 = nothing fails.
  FaultPlan(Port port, std::int64_t step, Raised raised) : port_(port), step_(step), raised_(raised) {}

  /// A call of that port: whether it is the one that fails.
  [[nodiscard]] bool Fails(Port port) {
    if (port != port_) return false;
    return ++calls_ == step_;
  }
  /// The same, where a failure is raised.
  void Pass(Port port);

  [[nodiscard]] bool fired() const { return step_ > 0 && calls_ >= step_; }
  [[nodiscard]] Port port() const { return port_; }
  [[nodiscard]] std::int64_t step() const { return step_; }
  [[nodiscard]] std::int64_t calls() const { return calls_; }

 private:
  Port port_;
  std::int64_t step_;
  Raised raised_;
  std::int64_t calls_ = 0;
};

}  // namespace kestro::faults
