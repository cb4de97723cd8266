#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kestro::soak {

/// What is wrong with the application. Collected, not thrown: the application's
/// own handlers would catch what is thrown inside its calls.
class Findings {
 public:
  static constexpr std::size_t kMost = 20;

  void Add(std::string text) {
    if (texts_.size() < kMost) texts_.push_back(std::move(text));
  }
  [[nodiscard]] bool empty() const { return texts_.empty(); }
  [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }

 private:
  std::vector<std::string> texts_;
};

}  // namespace kestro::soak
