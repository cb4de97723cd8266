#pragma once

#include <chrono>
#include <ctime>

#include "ports/clock.h"
#include "unit/posix/posix_support.h"

namespace kestro::test_support {

/// Stands at 2026-11-21 18:03:05.007 local time, which is Central European while it lives; a test moves it,
/// or lets each look take a while.
class SteppingClock final : public ports::Clock {
 public:
  SteppingClock() { ::tzset(); }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return now += step; }

  mutable std::chrono::system_clock::time_point now{std::chrono::milliseconds(1'795'280'585'007)};
  std::chrono::milliseconds step{0};

 private:
  const test::ScopedEnvironment zone_{"TZ", "CET-1"};
};

}  // namespace kestro::test_support
