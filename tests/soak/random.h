#pragma once

#include <cstdint>
#include <iterator>
#include <random>

namespace kestro::soak {

/// Random choices that are the same on every machine for equal seeds.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// 0 .. count - 1; 0 for a count below 1.
  [[nodiscard]] int Below(int count) {
    return count < 1 ? 0 : static_cast<int>(engine_() % static_cast<std::uint64_t>(count));
  }
  [[nodiscard]] bool OneIn(int count) { return Below(count) == 0; }
  [[nodiscard]] std::uint32_t Word() { return static_cast<std::uint32_t>(engine_()); }
  [[nodiscard]] std::int32_t Number() { return static_cast<std::int32_t>(Word()); }

  /// One of the values, which must not be none.
  template <class Values>
  [[nodiscard]] const auto& Pick(const Values& values) {
    return values[static_cast<std::size_t>(Below(static_cast<int>(std::size(values))))];
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace kestro::soak
