#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

#include "adapters/qt/qt_descriptor_watcher.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

using EventLoop = ScreenFrontEnd;

TEST_F(EventLoop, PostedTasksRunInOrderAlsoThoseOfOtherThreads) {
  std::vector<int> order;
  post_([&] {
    order.push_back(1);
    post_([&] { order.push_back(3); });
  });
  std::thread([&] { post_([&] { order.push_back(2); }); }).join();
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(WaitUntil([&] { return order.size() == 3; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(EventLoop, TasksOfAPosterThatIsGoneDoNotRun) {
  bool ran = false;
  {
    adapters::QtEventPoster gone(boundary_);
    gone([&] { ran = true; });
  }
  QCoreApplication::processEvents();
  EXPECT_FALSE(ran);
}

/// A descriptor that can be read from once it was signalled.
struct Signal {
  Signal() = default;
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;
  ~Signal() { ::close(descriptor); }
  const int descriptor = ::eventfd(0, 0);
};

TEST_F(EventLoop, AReadableDescriptorIsReportedUntilItIsReadOrUnwatched) {
  const Signal signal;
  adapters::QtDescriptorWatcher watcher(boundary_);
  int calls = 0;
  watcher.Watch(signal.descriptor, [&] {
    if (++calls < 3) return;
    eventfd_t times = 0;
    ::eventfd_read(signal.descriptor, &times);
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 0);
  ::eventfd_write(signal.descriptor, 1);
  EXPECT_TRUE(WaitUntil([&] { return calls == 3; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 3);

  std::string mark = "replaced";
  watcher.Watch(signal.descriptor, [&watcher, &signal, &calls, mark] {
    watcher.Unwatch(signal.descriptor);
    calls += mark == "replaced" ? 10 : 100;  // its own state is still there
  });
  ::eventfd_write(signal.descriptor, 1);
  EXPECT_TRUE(WaitUntil([&] { return calls == 13; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 13);
}

TEST_F(EventLoop, TheEndOfTheProcessComesThroughADescriptorsCallback) {
  const Signal signal;
  adapters::QtDescriptorWatcher watcher(boundary_);
  watcher.Watch(signal.descriptor, [] { throw base::ProcessEnded{}; });
  ::eventfd_write(signal.descriptor, 1);
  EXPECT_EQ(boundary_.RunUntilEnded(), 0);
}

}  // namespace
}  // namespace kestro::front_end_tests
