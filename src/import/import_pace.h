#pragma once

#include <chrono>
#include <cstddef>

#include "ports/clock.h"

namespace kestro::import {

/// When an import pauses to store what it has read and to let window events
/// run. Small groups of contacts answer the user at once and large ones are fast:
/// the groups grow as long as reading and storing one takes well below a tenth of a second.
class ImportPace {
 public:
  explicit ImportPace(const ports::Clock& clock) : clock_(clock), pause_ended_(clock.Now()) {}

  /// `contacts` are waiting to be stored, read from lines of so many bytes in all.
  [[nodiscard]] bool PauseIsDue(std::size_t contacts, std::size_t bytes) const {
    return contacts >= group_ || bytes >= kMostBytes || Elapsed() >= kLongestReading;
  }
  /// A group has been stored.
  void GroupStored() {
    const auto taken = Elapsed();
    if (taken < kShortGroup) {
      group_ = std::min(group_ * 2, kLargestGroup);
    } else if (taken > kLongGroup && group_ > kFewestShrunk) {
      group_ /= 2;
    }
  }
  void PauseEnded() { pause_ended_ = clock_.Now(); }

 private:
  using Duration = std::chrono::system_clock::duration;

  static constexpr std::size_t kLargestGroup = 4096;
  static constexpr std::size_t kFewestShrunk = 1024;  // a disk that is slow to store is no reason for fewer
  static constexpr std::size_t kMostBytes = std::size_t{4} << 20U;
  static constexpr Duration kLongestReading = std::chrono::milliseconds(40);
  static constexpr Duration kShortGroup = std::chrono::milliseconds(45);
  static constexpr Duration kLongGroup = std::chrono::milliseconds(80);

  [[nodiscard]] Duration Elapsed() const { return clock_.Now() - pause_ended_; }

  const ports::Clock& clock_;
  std::chrono::system_clock::time_point pause_ended_;
  std::size_t group_ = 1;
};

}  // namespace kestro::import
