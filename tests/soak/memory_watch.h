#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

namespace kestro::soak {

struct MemoryUse {
  std::int64_t resident = 0;   // bytes of the process in memory; with the address sanitizer no use
  std::int64_t allocated = 0;  // bytes handed out by the allocator and not given back
};

/// Tells memory that grows with the calls from memory that goes up and down: the
/// least of the last samples is compared with the most of the first ones.
class MemoryWatch {
 public:
  explicit MemoryWatch(const char* of) : of_(of) {}

  void Sample(std::int64_t call);
  /// Not as long as there are too few samples.
  [[nodiscard]] bool Grows() const;
  /// Some of the samples, and the growth, if there are enough.
  void Print(std::ostream& out) const;

 private:
  struct SampleOfCall {
    std::int64_t call = 0;
    MemoryUse use;
  };

  static constexpr std::ptrdiff_t kWindow = 10;  // samples

  [[nodiscard]] bool enough() const { return samples_.size() >= 2 * kWindow; }
  [[nodiscard]] std::int64_t Growth(std::int64_t MemoryUse::*figure) const;

  const char* of_;
  std::vector<SampleOfCall> samples_;
};

}  // namespace kestro::soak
