#pragma once

#include <chrono>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

#include "adapters/posix/descriptor_watcher.h"
#include "adapters/posix/file_descriptor.h"

namespace kestro::adapters {

/// Starts other programs that then go their own way: in a session of their own,
/// without any descriptor of this process (standard input and outputs are
/// /dev/null), with default signal handling. No shell is involved. A program
/// that ends is collected from the event loop, so that no zombie stays; those
/// that outlive this object are the system's. User-interface thread only.
class DetachedProcesses {
 public:
  /// The watcher must outlive the object.
  explicit DetachedProcesses(DescriptorWatcher& watcher) : watcher_(watcher) {}
  ~DetachedProcesses();
  DetachedProcesses(const DetachedProcesses&) = delete;
  DetachedProcesses& operator=(const DetachedProcesses&) = delete;

  /// Starts arguments[0], looked up in $PATH unless it has a "/", and blocks for
  /// at most `patience` to see whether it fails at once. Raises 53 when there is
  /// no such program, 75 when it cannot be run, 440 when it ended within that
  /// time with a status other than 0 or by a signal. A program that still runs
  /// then has succeeded.
  void Start(std::vector<std::string> arguments, std::chrono::milliseconds patience);

  /// Programs that run, or have ended and not been collected yet.
  [[nodiscard]] std::size_t running() const { return running_.size(); }

 private:
  void CollectLater(pid_t process, FileDescriptor handle);

  DescriptorWatcher& watcher_;
  std::map<pid_t, FileDescriptor> running_;
};

}  // namespace kestro::adapters
