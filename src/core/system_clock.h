#pragma once

#include "ports/clock.h"

namespace kestro::core {

class SystemClock final : public ports::Clock {
 public:
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override {
    return std::chrono::system_clock::now();
  }
};

}  // namespace kestro::core
