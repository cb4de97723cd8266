#include "programs/kestro-cti/ending_signals.h"

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "base/runtime_error.h"

namespace kestro::programs {
namespace {

/// The only thing that a signal handler can reach: where to write.
std::atomic<int> signal_descriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void HandleSignal(int /*number*/) {
  const char byte = 0;
  const int descriptor = signal_descriptor.load();
  if (descriptor >= 0 && write(descriptor, &byte, 1) < 0) _exit(1);
}

void SetHandler(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
}

}  // namespace

EndingSignals::EndingSignals(adapters::QtDescriptorWatcher& watcher, std::function<void()> end)
    : watcher_(watcher), end_(std::move(end)) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw base::RuntimeError(base::kInternalError, "Cannot watch for signals");
  }
  reading_ = ends[0];
  writing_ = ends[1];
  signal_descriptor = writing_;
  SetHandler(HandleSignal);
  watcher_.Watch(reading_, [this] { Arrived(); });
}

EndingSignals::~EndingSignals() {
  SetHandler(SIG_DFL);
  signal_descriptor = -1;
  watcher_.Unwatch(reading_);
  close(reading_);
  close(writing_);
}

void EndingSignals::Arrived() {
  char byte = 0;
  if (read(reading_, &byte, 1) != 1) return;
  // From here on an impatient user is not held up.
  SetHandler(SIG_DFL);
  end_();
}

}  // namespace kestro::programs
