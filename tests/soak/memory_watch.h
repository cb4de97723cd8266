#pragma once

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <vector>

#include "whole/memory_use.h"

namespace kestro::soak {

/// Tells memory that grows with the calls from memory that goes up and down: the
/// least of the last samples is compared with the most of the first ones.
class MemoryWatch {
 public:
  /// Calls before the first sample: until then every list, cache and window has been used once.
  static constexpr std::int64_t kWarmUpCalls = 10'000;
  static constexpr std::ptrdiff_t kWindow = 10;  // samples

  void Sample(std::int64_t call) {
    if (call > kWarmUpCalls) samples_.push_back({call, test::ReadMemoryUse()});
  }
  [[nodiscard]] bool enough() const { return samples_.size() >= 2 * kWindow; }
  /// Bytes more of that figure; 0 as long as there are too few samples.
  [[nodiscard]] std::int64_t Growth(std::size_t test::MemoryUse::*figure) const {
    if (!enough()) return 0;
    const auto value = [figure](const SampleOfCall& sample) { return sample.use.*figure; };
    const auto most = std::ranges::max_element(samples_.begin(), samples_.begin() + kWindow, {}, value);
    const auto least = std::ranges::min_element(samples_.end() - kWindow, samples_.end(), {}, value);
    return static_cast<std::int64_t>(value(*least)) - static_cast<std::int64_t>(value(*most));
  }
  void Print(std::ostream& out) const {
    constexpr std::size_t kPrintedSamples = 12;
    constexpr std::size_t kKibibyte = 1024;
    const std::size_t step = std::max<std::size_t>(1, samples_.size() / kPrintedSamples);
    for (std::size_t i = 0; i < samples_.size(); i += step) {
      const auto& [call, use] = samples_[i];
      out << "  call " << call << ": resident " << use.resident / kKibibyte << " KiB, allocated "
          << use.allocated / kKibibyte << " KiB\n";
    }
  }

 private:
  struct SampleOfCall {
    std::int64_t call;
    test::MemoryUse use;
  };
  std::vector<SampleOfCall> samples_;
};

}  // namespace kestro::soak
