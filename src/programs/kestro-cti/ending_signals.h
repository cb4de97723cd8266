#pragma once

#include <functional>

#include "adapters/qt/qt_descriptor_watcher.h"

namespace kestro::programs {

/// Turns SIGTERM and SIGINT into an event of the event loop. A second SIGINT
/// while the first is being handled ends the process at once, as usual.
class EndingSignals {
 public:
  /// Raises base::RuntimeError when the system has no descriptors left. One object a process.
  EndingSignals(adapters::QtDescriptorWatcher& watcher, std::function<void()> end);
  ~EndingSignals();
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;

 private:
  void Arrived();

  adapters::QtDescriptorWatcher& watcher_;
  std::function<void()> end_;
  int reading_ = -1;
  int writing_ = -1;
};

}  // namespace kestro::programs
