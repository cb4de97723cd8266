#pragma once

#include "ports/instance_guard.h"

namespace kestro::scenario {

/// Another running instance, where the script says so.
class ScriptedInstances final : public ports::InstanceGuard {
 public:
  void SetAnotherRuns() { another_runs_ = true; }
  [[nodiscard]] bool AnotherInstanceRuns() override { return another_runs_; }
  void BringOtherToFront() override {}

 private:
  bool another_runs_ = false;
};

}  // namespace kestro::scenario
