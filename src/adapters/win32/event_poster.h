#pragma once

#include <deque>
#include <functional>
#include <mutex>

#include "adapters/win32/hidden_window.h"

namespace kestro::adapters {

/// Posts tasks to the event loop, which runs them in the order of posting, one a
/// message. Callable from any thread; the tasks run on the window's thread,
/// through the runner. Tasks that have not run when the poster goes are dropped.
class EventPoster {
 public:
  using Runner = std::function<void(const std::function<void()>& task)>;

  /// The window must outlive the object. One poster a window.
  EventPoster(HiddenWindow& window, Runner run);
  ~EventPoster();
  EventPoster(const EventPoster&) = delete;
  EventPoster& operator=(const EventPoster&) = delete;

  void operator()(std::function<void()> task);

 private:
  void RunNext();

  HiddenWindow& window_;
  Runner run_;
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
};

}  // namespace kestro::adapters
