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
#include "core/dial_link.h"
#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using adapters::ActivationSocket;
using adapters::FileDescriptor;
using adapters::InstanceLock;
using adapters::RuntimeFolder;
using test::ErrorNumberOf;

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

/// Calls what is watched when told to.
class ManualWatcher final : public adapters::DescriptorWatcher {
 public:
  void Watch(int descriptor, std::function<void()> on_readable) override {
    descriptor_ = descriptor;
    on_readable_ = std::move(on_readable);
  }
  void Unwatch(int descriptor) override {
    EXPECT_EQ(descriptor_, descriptor);
    descriptor_ = -1;
  }
  void Run() {
    const auto on_readable = on_readable_;
    on_readable();
  }
  [[nodiscard]] bool watches() const { return descriptor_ >= 0; }

 private:
  int descriptor_ = -1;
  std::function<void()> on_readable_;
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
  void Send(std::string_view text) {
    const FileDescriptor sender(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    ASSERT_EQ(0, adapters::ConnectTo(sender, path_));
    ASSERT_EQ(static_cast<ssize_t>(text.size()),
              ::send(sender.get(), text.data(), text.size(), MSG_NOSIGNAL));
  }

  test_support::TemporaryFolder temporary_;
  RuntimeFolder folder_{temporary_.File("run").string()};
  std::string path_ = adapters::ActivationSocketPath(folder_);
  ManualWatcher watcher_;
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
  const auto ask = [this] { static_cast<void>(InstanceLock(folder_).AnotherInstanceRuns()); };
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
  const test::ScopedUmask open(0);
  StartSocket();
  EXPECT_EQ(0600, test::Permissions(path_));
  second.BringOtherToFront();
  second.BringOtherToFront();
  watcher_.Run();
  EXPECT_EQ(1, activations_) << "two at once are one";
  watcher_.Run();
  EXPECT_EQ(1, activations_);
  EXPECT_TRUE(adapters::RequestActivation(path_));
  watcher_.Run();
  EXPECT_EQ(2, activations_);
  socket_.reset();
  EXPECT_FALSE(fs::exists(path_));
  EXPECT_FALSE(watcher_.watches());
  EXPECT_FALSE(adapters::RequestActivation(path_));
  EXPECT_FALSE(adapters::RequestActivation(std::string(500, 'x')));
}

TEST_F(InstanceTest, LinksAreHandedOver) {
  folder_.Prepare();
  StartSocket();
  const std::string longest = "+" + std::string(core::kMostLinkDigits, '7');
  for (const std::string& number : {std::string("602111222"), longest, std::string()}) {
    EXPECT_TRUE(adapters::RequestDialling(path_, number));
    watcher_.Run();
  }
  EXPECT_EQ((std::vector<std::string>{"602111222", longest, ""}), numbers_);
  EXPECT_EQ(0, activations_);
  numbers_.clear();
  adapters::RequestActivation(path_);
  for (const char* number : {"1", "2", "3"}) adapters::RequestDialling(path_, number);
  adapters::RequestActivation(path_);
  watcher_.Run();
  EXPECT_EQ(std::vector<std::string>{"1"}, numbers_) << "the first of a flood";
  EXPECT_EQ(0, activations_);
}

TEST_F(InstanceTest, TheHandlerMayEndTheSocketOrTheProgram) {
  folder_.Prepare();
  StartSocket();
  action_ = [] { throw base::ProcessEnded(); };
  adapters::RequestActivation(path_);
  EXPECT_THROW(watcher_.Run(), base::ProcessEnded);
  action_ = [this] { socket_.reset(); };
  adapters::RequestActivation(path_);
  watcher_.Run();
  EXPECT_EQ(1, activations_);
  EXPECT_FALSE(watcher_.watches());
}

TEST_F(InstanceTest, HostileMessagesHaveNoEffect) {
  folder_.Prepare();
  StartSocket();
  for (const std::string& text :
       {std::string(), std::string("activat"), std::string("activate\n"), std::string("activate!"),
        std::string("activate\0", 9), std::string("Activate"), std::string(60'000, 'x'), std::string("dial"),
        std::string("dial 602a"), std::string("dial *21*602"), std::string("dial  602"),
        std::string("dial 602\n"), std::string("dial 602\0", 9), "dial +" + std::string(33, '7'),
        "dial " + std::string(60'000, '7')}) {
    Send(text);
    watcher_.Run();
    EXPECT_EQ(0, activations_) << text.substr(0, 20);
    EXPECT_TRUE(numbers_.empty()) << text.substr(0, 20);
  }
  Send("activate");
  watcher_.Run();
  EXPECT_EQ(1, activations_);
}

TEST_F(InstanceTest, DescriptorsSentAlongAreNotKept) {
  folder_.Prepare();
  StartSocket();
  const auto open_descriptors = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
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
  watcher_.Run();
  EXPECT_EQ(1, activations_);
  EXPECT_EQ(before + 1, open_descriptors()) << "only the sender's own socket came to it";
}

TEST_F(InstanceTest, ALiveSocketIsLeftAloneAndADeadOnesFileIsReplaced) {
  folder_.Prepare();
  StartSocket();
  ManualWatcher other;
  const auto start_other = [&] { const ActivationSocket socket(other, path_, [](const auto&) {}); };
  EXPECT_EQ(58, ErrorNumberOf(start_other));
  adapters::RequestActivation(path_);
  watcher_.Run();
  EXPECT_EQ(1, activations_) << "the first one still works";
  socket_.reset();
  {
    const FileDescriptor dead(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_un address = adapters::SocketAddress(path_);
    ASSERT_EQ(0, ::bind(dead.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
  }
  EXPECT_EQ(0, ErrorNumberOf(start_other));
  test_support::WriteFile(path_, "precious");
  EXPECT_EQ(58, ErrorNumberOf(start_other));
  EXPECT_EQ("precious", test_support::ReadFile(path_));
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
  watcher_.Run();
  EXPECT_EQ(0, activations_);
}

}  // namespace
}  // namespace kestro
