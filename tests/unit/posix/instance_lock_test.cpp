#include "adapters/posix/instance_lock.h"

#include <array>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "adapters/posix/activation_socket.h"
#include "adapters/posix/local_socket.h"
#include "adapters/posix/runtime_folder.h"
#include "core/dial_link.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using adapters::ActivationSocket;
using adapters::FileDescriptor;
using adapters::InstanceLock;
using adapters::RuntimeFolder;
using test::ErrorNumberOf;
using test::ScopedEnvironment;

/// Another process that holds the lock until it is killed.
class OtherProgram {
 public:
  explicit OtherProgram(const RuntimeFolder& folder) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    process_ = ::fork();
    if (process_ == 0) {
      InstanceLock lock(folder);
      const char state = lock.AnotherInstanceRuns() ? 'n' : 'y';
      if (::write(writing.get(), &state, 1) != 1) ::_exit(1);
      while (true) ::pause();
    }
    writing.Reset();
    char state = 0;
    holds_ = ::read(reading.get(), &state, 1) == 1 && state == 'y';
  }
  ~OtherProgram() { Kill(); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  [[nodiscard]] bool holds() const { return holds_; }
  void Kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(std::exchange(process_, -1), nullptr, 0);
  }

 private:
  pid_t process_ = -1;
  bool holds_ = false;
};

class InstanceTest : public testing::Test {
 protected:
  void StartSocket() {
    socket_ =
        std::make_unique<ActivationSocket>(watcher_, path_, [this](const ActivationSocket::Request& request) {
          const auto number = request.number;
          if (action_) action_();
          // Behind the action, which may have destroyed the socket.
          if (!number) ++activations_;
          if (number) numbers_.push_back(*number);
        });
  }
  test_support::TemporaryFolder temporary_;
  RuntimeFolder folder_{temporary_.File("run").string()};
  std::string path_ = adapters::ActivationSocketPath(folder_);
  test::PollingWatcher watcher_;
  int activations_ = 0;
  std::vector<std::string> numbers_;
  std::function<void()> action_;
  std::unique_ptr<ActivationSocket> socket_;
};

TEST_F(InstanceTest, TheLockGoesWithItsOwnerHoweverThatEnds) {
  InstanceLock lock(folder_);
  for (int round = 0; round < 2; ++round) {
    OtherProgram other(folder_);
    ASSERT_TRUE(other.holds());
    EXPECT_TRUE(lock.AnotherInstanceRuns());
    EXPECT_TRUE(lock.AnotherInstanceRuns());
    other.Kill();
  }
  EXPECT_FALSE(lock.AnotherInstanceRuns());
  EXPECT_FALSE(lock.AnotherInstanceRuns()) << "asked again it is still this one";
  EXPECT_FALSE(OtherProgram(folder_).holds());
  EXPECT_EQ(0600, test::Permissions(folder_.path() + "/instance.lock"));
  EXPECT_EQ(0700, test::Permissions(folder_.path()));
}

TEST_F(InstanceTest, APlaceThatIsNotTheUsersAloneIsRefused) {
  const auto ask = [this] { return InstanceLock(folder_).AnotherInstanceRuns(); };
  fs::create_directory(folder_.path());
  fs::permissions(folder_.path(), fs::perms(0755));
  EXPECT_EQ(75, ErrorNumberOf(ask));
  fs::permissions(folder_.path(), fs::perms(0700));
  fs::create_symlink(temporary_.File("elsewhere"), folder_.path() + "/instance.lock");
  EXPECT_EQ(75, ErrorNumberOf(ask));
  EXPECT_FALSE(fs::exists(temporary_.File("elsewhere")));
  fs::remove(folder_.path() + "/instance.lock");
  ::mkfifo((folder_.path() + "/instance.lock").c_str(), 0600);
  EXPECT_EQ(75, ErrorNumberOf(ask));
}

TEST_F(InstanceTest, TheRunningOneIsAskedToTheFront) {
  InstanceLock second(folder_);
  second.BringOtherToFront();  // nobody there: nothing happens
  folder_.Prepare();
  StartSocket();
  second.BringOtherToFront();
  second.BringOtherToFront();
  watcher_.RunOnce(0);
  EXPECT_EQ(1, activations_) << "two at once are one";
  watcher_.RunOnce(0);
  EXPECT_EQ(1, activations_);
  EXPECT_TRUE(adapters::RequestActivation(path_));
  watcher_.RunOnce(0);
  EXPECT_EQ(2, activations_);
  socket_.reset();
  EXPECT_EQ(0U, watcher_.watched());
  EXPECT_FALSE(adapters::RequestActivation(path_));
  EXPECT_FALSE(adapters::RequestActivation(std::string(500, 'x')));
}

TEST_F(InstanceTest, LinksAreHandedOver) {
  folder_.Prepare();
  StartSocket();
  const std::string longest = "+" + std::string(core::kMostLinkDigits, '7');
  for (const std::string& number : {std::string("602111222"), longest, std::string()}) {
    EXPECT_TRUE(adapters::RequestDialling(path_, number));
    watcher_.RunOnce(0);
  }
  EXPECT_EQ((std::vector<std::string>{"602111222", longest, ""}), numbers_);
  EXPECT_EQ(0, activations_);
  numbers_.clear();
  adapters::RequestActivation(path_);
  for (const char* number : {"1", "2", "3"}) adapters::RequestDialling(path_, number);
  adapters::RequestActivation(path_);
  watcher_.RunOnce(0);
  EXPECT_EQ(std::vector<std::string>{"1"}, numbers_) << "the first of a flood";
  EXPECT_EQ(0, activations_);
}

TEST_F(InstanceTest, TheHandlerMayEndTheSocketOrTheProgram) {
  folder_.Prepare();
  StartSocket();
  action_ = [] { throw base::ProcessEnded(); };
  adapters::RequestActivation(path_);
  EXPECT_THROW(watcher_.RunOnce(0), base::ProcessEnded);
  action_ = [this] { socket_.reset(); };
  adapters::RequestActivation(path_);
  watcher_.RunOnce(0);
  EXPECT_EQ(1, activations_);
  EXPECT_EQ(0U, watcher_.watched());
}

TEST_F(InstanceTest, DescriptorsSentAlongAreNotKept) {
  folder_.Prepare();
  StartSocket();
  const auto open_descriptors = [] { return test_support::FileCount("/proc/self/fd"); };
  const auto before = open_descriptors();
  const FileDescriptor sender(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(0, adapters::ConnectTo(sender, path_));
  std::string text = "activate";
  iovec part{text.data(), text.size()};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> ancillary{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = ancillary.data();
  message.msg_controllen = ancillary.size();
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof(int));
  const int passed = sender.get();
  std::memcpy(CMSG_DATA(header), &passed, sizeof(passed));
  ASSERT_EQ(static_cast<ssize_t>(text.size()), ::sendmsg(sender.get(), &message, 0));
  watcher_.RunOnce(0);
  EXPECT_EQ(1, activations_);
  EXPECT_EQ(before + 1, open_descriptors()) << "only the sender's own socket came to it";
}

TEST_F(InstanceTest, AnotherUsersMessageHasNoEffect) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  folder_.Prepare();
  StartSocket();
  fs::permissions(temporary_.path(), fs::perms(0755));
  fs::permissions(folder_.path(), fs::perms(0777));
  ASSERT_EQ(0, ::chmod(path_.c_str(), 0666));
  // A thread of its own: the system call itself changes the user of one thread only.
  const bool sent =
      std::async(std::launch::async, [this] {
        return ::syscall(SYS_setresuid, 12345, 12345, -1) == 0 && adapters::RequestActivation(path_);
      }).get();
  EXPECT_TRUE(sent);
  watcher_.RunOnce(0);
  EXPECT_EQ(0, activations_);
}

TEST(RuntimeFolder, LiesInTheSessionOrElseInTheTemporaryDirectory) {
  const test_support::TemporaryFolder folder;
  const std::string root = folder.path();
  const std::string in_temporary = root + "/kestro-cti-" + std::to_string(::geteuid());
  const ScopedEnvironment temporary("TMPDIR", root.c_str());
  {
    const ScopedEnvironment session("XDG_RUNTIME_DIR", root.c_str());
    EXPECT_EQ(root + "/kestro-cti", RuntimeFolder().path());
  }
  for (const char* const value : {static_cast<const char*>(nullptr), "relative", "/no/such/folder"}) {
    const ScopedEnvironment session("XDG_RUNTIME_DIR", value);
    EXPECT_EQ(in_temporary, RuntimeFolder().path());
  }
}

TEST(RuntimeFolder, IsTheUsersAloneOrRefused) {
  const test_support::TemporaryFolder folder;
  const RuntimeFolder runtime(folder.File("run"));
  EXPECT_FALSE(runtime.Exists());
  const test::ScopedUmask open(0);
  runtime.Prepare();
  EXPECT_EQ(0700, test::Permissions(runtime.path()));
  EXPECT_NO_THROW(runtime.Prepare());
  EXPECT_TRUE(runtime.Exists());

  fs::permissions(runtime.path(), fs::perms(0750));
  EXPECT_EQ(75, ErrorNumberOf([&] { runtime.Prepare(); }));
  fs::permissions(runtime.path(), fs::perms(0700));
  fs::create_directory_symlink(runtime.path(), folder.File("link"));
  EXPECT_EQ(75, ErrorNumberOf([&] { RuntimeFolder(folder.File("link")).Prepare(); }));
  test_support::WriteFile(folder.File("file"), "");
  EXPECT_EQ(75, ErrorNumberOf([&] { RuntimeFolder(folder.File("file")).Prepare(); }));
  if (::geteuid() != 0) return;  // only root can give a folder away
  ASSERT_EQ(0, ::chown(runtime.path().c_str(), 12345, 12345));
  EXPECT_EQ(75, ErrorNumberOf([&] { runtime.Prepare(); }));
}

}  // namespace
}  // namespace kestro
