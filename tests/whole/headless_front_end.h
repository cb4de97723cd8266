#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "adapters/headless/headless_front_end.h"

namespace kestro::test {

/// The front end without a screen, whose message boxes are answered by a
/// function and whose event loop can be told what runs in it.
class HeadlessFrontEnd final : public adapters::HeadlessFrontEnd {
 public:
  using Box = std::function<ports::BoxAnswer(std::string_view text, int style, ports::BoxAnswer planned)>;
  using Task = std::function<void()>;
  /// Gets every posted task when its turn has come, and runs it.
  using Runner = std::function<void(const Task& task)>;

  explicit HeadlessFrontEnd(
      Box box, Runner runner = [](const Task& task) { task(); })
      : box_(std::move(box)), runner_(std::move(runner)) {}

  void Post(Task task) override {
    adapters::HeadlessFrontEnd::Post([this, task = std::move(task)] { runner_(task); });
  }
  ports::BoxAnswer ShowBox(std::string_view text, int style, ports::BoxAnswer planned) override {
    return box_(text, style, planned);
  }

 private:
  Box box_;
  Runner runner_;
};

}  // namespace kestro::test
