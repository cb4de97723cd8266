#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <poll.h>
#include <vector>

#include "adapters/posix/descriptor_watcher.h"

namespace kestro::test {

/// An event loop that runs for as long as a test wants it to.
class PollingWatcher final : public adapters::DescriptorWatcher {
 public:
  void Watch(int descriptor, std::function<void()> on_readable) override {
    watched_[descriptor] = std::make_shared<std::function<void()>>(std::move(on_readable));
  }
  void Unwatch(int descriptor) override { watched_.erase(descriptor); }

  /// Handles what is there, after waiting at most so long for anything.
  void RunOnce(int most_milliseconds) {
    std::vector<pollfd> descriptors;
    for (const auto& [descriptor, callback] : watched_) descriptors.push_back({descriptor, POLLIN, 0});
    ::poll(descriptors.data(), descriptors.size(), most_milliseconds);
    for (const pollfd& one : descriptors) {
      const auto found = watched_.find(one.fd);
      if (one.revents == 0 || found == watched_.end()) continue;
      const auto callback = found->second;  // which may unwatch itself
      (*callback)();
    }
  }
  /// True when the condition has come true in that time.
  bool RunUntil(const std::function<bool()>& condition,
                std::chrono::milliseconds time = std::chrono::seconds(5)) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!condition() && std::chrono::steady_clock::now() < end) RunOnce(5);
    return condition();
  }
  [[nodiscard]] std::size_t watched() const { return watched_.size(); }

 private:
  std::map<int, std::shared_ptr<std::function<void()>>> watched_;
};

}  // namespace kestro::test
