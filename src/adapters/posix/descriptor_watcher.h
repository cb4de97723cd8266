#pragma once

#include <functional>

namespace kestro::adapters {

/// The part of an event loop that tells when a file descriptor can be read.
class DescriptorWatcher {
 public:
  virtual ~DescriptorWatcher() = default;
  /// From now on `on_readable` is called from the event loop, on the
  /// user-interface thread, as long as the descriptor has something to read or
  /// has been closed by the other side. One watch a descriptor.
  ///
  /// The callback may do anything: unwatch its own descriptor, run the event
  /// loop again, or leave with base::ProcessEnded, which goes on to the event
  /// loop's boundary. It is kept alive while it runs.
  virtual void Watch(int descriptor, std::function<void()> on_readable) = 0;
  /// No call after this. To be called before the descriptor is closed.
  virtual void Unwatch(int descriptor) = 0;
};

}  // namespace kestro::adapters
