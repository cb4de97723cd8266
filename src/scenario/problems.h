#pragma once

#include <optional>
#include <string>
#include <utility>

namespace kestro::scenario {

/// What went wrong inside a call of the application, where an exception could
/// only get out through the application's own handlers. The player asks after
/// every action; the first problem counts.
class Problems {
 public:
  void Add(std::string text) {
    if (!first_) first_ = std::move(text);
  }
  [[nodiscard]] std::optional<std::string> Take() { return std::exchange(first_, std::nullopt); }

 private:
  std::optional<std::string> first_;
};

}  // namespace kestro::scenario
