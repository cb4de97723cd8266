#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include "whole/memory_use.h"

namespace kestro::soak {

/// Tells memory that grows with the calls from memory that goes up and down: the
/// least of the last samples is compared with the most of the first ones.
class MemoryWatch {
 public:
  /// Calls before the first sample: until then every list, cache and window has been used once.
  static constexpr std::int64_t kWarmUpCalls = 10'000;
  static constexpr std::size_t kWindow = 10;  // samples

  void Sample(std::int64_t call);
  /// Bytes; 0 as long as there are too few samples.
  [[nodiscard]] std::int64_t AllocatedGrowth() const;
  [[nodiscard]] std::int64_t ResidentGrowth() const;
  [[nodiscard]] bool enough() const { return samples_.size() >= 2 * kWindow; }
  void Print(std::ostream& out) const;

 private:
  [[nodiscard]] std::int64_t Growth(std::size_t test::MemoryUse::*figure) const;

  struct SampleOfCall {
    std::int64_t call;
    test::MemoryUse use;
  };
  std::vector<SampleOfCall> samples_;
};

}  // namespace kestro::soak
