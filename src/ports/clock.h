#pragma once

#include <chrono>

namespace kestro::ports {

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual std::chrono::system_clock::time_point Now() const = 0;
};

}  // namespace kestro::ports
