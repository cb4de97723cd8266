#pragma once

#include <chrono>
#include <map>
#include <poll.h>
#include <string>
#include <vector>

#include "adapters/posix/descriptor_watcher.h"
#include "unit/support/temporary_folder.h"

namespace kestro::test {

/// An event loop that runs for as long as a test wants it to.
class PollingWatcher final : public adapters::DescriptorWatcher {
 public:
  void Watch(int descriptor, std::function<void()> on_readable) override {
    callbacks_[descriptor] = std::move(on_readable);
  }
  void Unwatch(int descriptor) override { callbacks_.erase(descriptor); }

  /// True when the condition has come true within five seconds.
  bool RunUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!condition() && std::chrono::steady_clock::now() < end) RunOnce();
    return condition();
  }
  [[nodiscard]] std::size_t watched() const { return callbacks_.size(); }

 private:
  void RunOnce() {
    std::vector<pollfd> descriptors;
    for (const auto& [descriptor, callback] : callbacks_) descriptors.push_back({descriptor, POLLIN, 0});
    ::poll(descriptors.data(), descriptors.size(), 10);
    for (const pollfd& descriptor : descriptors) {
      const auto found = callbacks_.find(descriptor.fd);
      if (descriptor.revents == 0 || found == callbacks_.end()) continue;
      const auto callback = found->second;
      callback();
    }
  }

  std::map<int, std::function<void()>> callbacks_;
};

/// Writes a shell script that anybody may run; its native path.
inline std::string WriteScript(const test_support::TemporaryFolder& folder, std::string_view name,
                               std::string_view body) {
  const auto path = folder.File(name);
  test_support::WriteFile(path, "#!/bin/sh\n" + std::string(body) + "\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path.string();
}

/// Lets the script named print its arguments, one a line in angle brackets, into FOLDER/arguments.
inline std::string WriteArgumentScript(const test_support::TemporaryFolder& folder, std::string_view name) {
  const std::string output = folder.File("arguments").string();
  return WriteScript(folder, name,
                     R"(for word; do printf '<%s>\n' "$word"; done >')" + output + ".new'\nmv '" + output +
                         ".new' '" + output + "'");
}

}  // namespace kestro::test
