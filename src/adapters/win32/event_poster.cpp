#include "adapters/win32/event_poster.h"

namespace kestro::adapters {
namespace {

constexpr UINT kTaskPosted = WM_APP + 0x51;

}  // namespace

EventPoster::EventPoster(HiddenWindow& window, Runner run) : window_(window), run_(std::move(run)) {
  window_.On(kTaskPosted, [this](WPARAM, LPARAM) -> LRESULT {
    RunNext();
    return 0;
  });
}

EventPoster::~EventPoster() { window_.On(kTaskPosted, {}); }

void EventPoster::operator()(std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  tasks_.push_back(std::move(task));
  // A message that finds no place any more (there are ten thousand) costs no task: the next one takes both.
  ::PostMessageW(window_.handle(), kTaskPosted, 0, 0);
}

void EventPoster::RunNext() {
  std::function<void()> task;
  {
    const std::lock_guard lock(mutex_);
    if (tasks_.empty()) return;
    task = std::move(tasks_.front());
    tasks_.pop_front();
    if (!tasks_.empty()) ::PostMessageW(window_.handle(), kTaskPosted, 0, 0);
  }
  run_(task);
}

}  // namespace kestro::adapters
