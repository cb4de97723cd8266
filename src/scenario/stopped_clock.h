#pragma once

#include "ports/clock.h"

namespace kestro::scenario {

/// No time passes in a scenario: equal scripts give equal transcripts.
class StoppedClock final : public ports::Clock {
 public:
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return {}; }
};

}  // namespace kestro::scenario
