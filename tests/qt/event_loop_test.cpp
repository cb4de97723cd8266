#include <array>
#include <thread>
#include <unistd.h>

#include "adapters/qt/qt_descriptor_watcher.h"
#include "qt/qt_fixture.h"

namespace kestro::qt_tests {
namespace {

using EventLoop = QtFixture;

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

class Pipe {
 public:
  Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
  ~Pipe() {
    close(ends_[0]);
    close(ends_[1]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  [[nodiscard]] int reading() const { return ends_[0]; }
  void Write() const { EXPECT_EQ(write(ends_[1], "x", 1), 1); }
  void Read() const {
    char byte = 0;
    EXPECT_EQ(read(ends_[0], &byte, 1), 1);
  }

 private:
  std::array<int, 2> ends_{};
};

TEST_F(EventLoop, AReadableDescriptorIsReportedUntilItIsReadOrUnwatched) {
  const Pipe pipe;
  adapters::QtDescriptorWatcher watcher(boundary_);
  int calls = 0;
  watcher.Watch(pipe.reading(), [&] {
    if (++calls < 3) return;
    pipe.Read();
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 0);
  pipe.Write();
  EXPECT_TRUE(WaitUntil([&] { return calls == 3; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 3);

  std::string mark = "replaced";
  watcher.Watch(pipe.reading(), [&watcher, &pipe, &calls, mark] {
    watcher.Unwatch(pipe.reading());
    calls += mark == "replaced" ? 10 : 100;  // its own state is still there
  });
  pipe.Write();
  EXPECT_TRUE(WaitUntil([&] { return calls == 13; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 13);
}

TEST_F(EventLoop, TheEndOfTheProcessComesThroughADescriptorsCallback) {
  const Pipe pipe;
  adapters::QtDescriptorWatcher watcher(boundary_);
  watcher.Watch(pipe.reading(), [] { throw base::ProcessEnded{}; });
  pipe.Write();
  EXPECT_EQ(boundary_.RunUntilEnded(), 0);
}

}  // namespace
}  // namespace kestro::qt_tests
