#pragma once

#include <map>
#include <memory>
#include <poll.h>
#include <vector>

#include "adapters/posix/descriptor_watcher.h"

namespace kestro::fuzz {

/// An event loop that handles what is there and never waits.
class PollOnce final : public adapters::DescriptorWatcher {
 public:
  void Watch(int descriptor, std::function<void()> on_readable) override {
    watched_[descriptor] = std::make_shared<std::function<void()>>(std::move(on_readable));
  }
  void Unwatch(int descriptor) override { watched_.erase(descriptor); }

  void Run() {
    std::vector<pollfd> descriptors;
    for (const auto& [descriptor, callback] : watched_) descriptors.push_back({descriptor, POLLIN, 0});
    ::poll(descriptors.data(), descriptors.size(), 0);
    for (const pollfd& one : descriptors) {
      const auto found = watched_.find(one.fd);
      if (one.revents == 0 || found == watched_.end()) continue;
      const auto callback = found->second;
      (*callback)();
    }
  }

 private:
  std::map<int, std::shared_ptr<std::function<void()>>> watched_;
};

}  // namespace kestro::fuzz
