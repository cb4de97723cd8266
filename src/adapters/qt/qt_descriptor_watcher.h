#pragma once

#include <functional>
#include <map>
#include <memory>

#include "adapters/qt/event_boundary.h"

class QSocketNotifier;

namespace kestro::adapters {

/// Calls back on the user-interface thread while a file descriptor is readable.
class QtDescriptorWatcher {
 public:
  explicit QtDescriptorWatcher(EventBoundary& boundary);
  ~QtDescriptorWatcher();
  QtDescriptorWatcher(const QtDescriptorWatcher&) = delete;
  QtDescriptorWatcher& operator=(const QtDescriptorWatcher&) = delete;

  /// Replaces an earlier watch of the same descriptor.
  void Watch(int descriptor, std::function<void()> readable);
  /// Must come before the descriptor is closed; may come from its own callback.
  void Unwatch(int descriptor);

 private:
  struct LaterDeleter {
    void operator()(QSocketNotifier* notifier) const;
  };

  EventBoundary& boundary_;
  std::map<int, std::unique_ptr<QSocketNotifier, LaterDeleter>> notifiers_;
};

}  // namespace kestro::adapters
