#pragma once

#include "base/runtime_error.h"
#include "ports/process_control.h"

namespace kestro::adapters {

/// Ends the process by leaving the call stack up to the event boundary.
class QtProcessControl final : public ports::ProcessControl {
 public:
  [[noreturn]] void EndProcess() override { throw base::ProcessEnded{}; }
};

}  // namespace kestro::adapters
