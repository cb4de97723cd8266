#include "adapters/posix/control_socket.h"

#include <array>
#include <cerrno>
#include <future>
#include <memory>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "adapters/posix/activation_socket.h"
#include "adapters/posix/control_client.h"
#include "adapters/posix/local_socket.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using adapters::ControlClient;
using adapters::ControlSocketServer;
using adapters::FileDescriptor;
using namespace std::chrono_literals;

class ControlSocket : public testing::Test {
 protected:
  ControlSocket() { StartServer(); }

  void StartServer() {
    server_ = std::make_unique<ControlSocketServer>(loop_, path_, [this](std::string_view request) {
      requests_.emplace_back(request);
      std::string reply = handler_ ? handler_() : "ok\n" + std::string(request) + "\n";
      ++answered_;  // behind the handler, which may have destroyed the server
      return reply;
    });
  }
  void RunFor(std::chrono::milliseconds time) {
    loop_.RunUntil([] { return false; }, time);
  }
  template <class Result>
  Result RunUntilReady(std::future<Result> result) {
    EXPECT_TRUE(loop_.RunUntil([&] { return result.wait_for(0ms) == std::future_status::ready; }, 10s));
    return result.get();
  }
  std::optional<std::string> Ask(const std::string& line) {
    return RunUntilReady(
        std::async(std::launch::async, [this, line] { return ControlClient(path_, 5s).Ask(line); }));
  }
  FileDescriptor Connect() {
    FileDescriptor socket = adapters::NewLocalSocket();
    EXPECT_EQ(0, adapters::ConnectTo(socket, path_));
    return socket;
  }
  static void Send(const FileDescriptor& socket, std::string_view text) {
    ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL);
  }
  /// What came; "closed" when the other side has closed without a word, "" when nothing came yet.
  std::string Receive(const FileDescriptor& socket) {
    RunFor(20ms);
    std::array<char, 4096> block{};
    const ssize_t count = ::recv(socket.get(), block.data(), block.size(), 0);
    if (count < 0) return errno == EAGAIN ? "" : "closed";
    return count == 0 ? "closed" : std::string(block.data(), static_cast<std::size_t>(count));
  }

  test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("exchange.sock");
  test::PollingWatcher loop_;
  std::vector<std::string> requests_;
  std::function<std::string()> handler_;
  int answered_ = 0;
  std::unique_ptr<ControlSocketServer> server_;
};

// Sockets of both kinds are files of the user's, and treat what is in their place alike.
TEST_F(ControlSocket, SocketFilesAreTheUsersAloneAndReplaceOnlyDeadOnes) {
  using Server = std::shared_ptr<void>;
  const struct {
    int type;
    std::function<Server()> start;
  } kinds[] = {{SOCK_STREAM,
                [this] {
                  return std::make_shared<ControlSocketServer>(
                      loop_, path_, [](std::string_view) { return std::string(); });
                }},
               {SOCK_DGRAM, [this] {
                  return std::make_shared<adapters::ActivationSocket>(loop_, path_, [](const auto&) {});
                }}};
  server_.reset();
  const test::ScopedUmask open(0);
  for (const auto& kind : kinds) {
    {
      const FileDescriptor dead(::socket(AF_UNIX, kind.type | SOCK_CLOEXEC, 0));
      const sockaddr_un address = adapters::SocketAddress(path_);
      ASSERT_EQ(0, ::bind(dead.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
    }
    ASSERT_TRUE(fs::exists(path_));
    EXPECT_EQ(std::nullopt, ControlClient(path_).Ask("list"));
    Server running = kind.start();
    EXPECT_EQ(0600, test::Permissions(path_));
    EXPECT_EQ(58, test::ErrorNumberOf(kind.start)) << "one is alive";
    EXPECT_TRUE(fs::exists(path_));
    running.reset();
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_EQ(0U, loop_.watched());
    running = kind.start();
    fs::remove(path_);
    test_support::WriteFile(path_, "precious");
    running.reset();
    EXPECT_EQ("precious", test_support::ReadFile(path_)) << "it has the name of the socket that was there";
    EXPECT_EQ(58, test::ErrorNumberOf(kind.start));
    EXPECT_EQ("precious", test_support::ReadFile(path_));
    fs::remove(path_);
  }
  EXPECT_EQ(std::nullopt, Ask("list")) << "nothing listens";
  path_ = folder_.File(std::string(200, 'x'));
  EXPECT_EQ(75, test::ErrorNumberOf([this] { StartServer(); }));
}

TEST_F(ControlSocket, HostileClientsAreRefusedWithAReason) {
  const std::pair<std::string, std::vector<std::string>> rows[] = {
      {"error: the request is too long\n",
       {std::string(5000, 'x'), std::string(100'000, 'x'), std::string(4097, 'x') + "\n"}},
      {"error: more than one line\n", {"ring 1\nring 2\n", "ring 1\nring 2", "\n\n"}}};
  for (const auto& [reply, requests] : rows) {
    for (const auto& request : requests) {
      const FileDescriptor socket = Connect();
      Send(socket, request);
      EXPECT_EQ(reply, Receive(socket)) << request.substr(0, 20);
    }
  }
  const FileDescriptor cut_off = Connect();
  Send(cut_off, "ring 1");
  ::shutdown(cut_off.get(), SHUT_WR);
  EXPECT_EQ("error: the request has no line end\n", Receive(cut_off));
  EXPECT_TRUE(requests_.empty());
  EXPECT_EQ("error: the request is too long\n", Ask(std::string(1'000'000, 'x')));
  EXPECT_EQ("ok\nlist\n", Ask("list"));
}

TEST_F(ControlSocket, ARequestMayComeInPiecesWhileOthersAreServed) {
  const FileDescriptor slow = Connect();
  Send(slow, "ri");
  EXPECT_EQ("", Receive(slow));
  EXPECT_EQ("ok\nlist\n", Ask("list"));
  Send(slow, "ng 1\n");
  EXPECT_EQ("ok\nring 1\n", Receive(slow));
  const FileDescriptor longest = Connect();
  Send(longest, std::string(4096, 'x') + "\n");
  RunFor(20ms);
  EXPECT_EQ(4096U, requests_.back().size());
}

TEST_F(ControlSocket, TheOldestSilentConnectionMakesRoomForTheNinth) {
  std::array<FileDescriptor, 8> silent;
  for (FileDescriptor& socket : silent) socket = Connect();
  EXPECT_EQ("", Receive(silent[0]));
  EXPECT_EQ("ok\nlist\n", Ask("list"));
  EXPECT_EQ("closed", Receive(silent[0]));
  EXPECT_EQ("", Receive(silent[1]));
}

TEST_F(ControlSocket, AHandlerMayRunTheEventLoopAndServeAnother) {
  handler_ = [this] {
    handler_ = nullptr;
    EXPECT_EQ("ok\ninner\n", Ask("inner"));
    return std::string("ok\nouter\n");
  };
  EXPECT_EQ("ok\nouter\n", Ask("outer"));
  EXPECT_EQ(1U, loop_.watched()) << "only the listening socket is left";
}

TEST_F(ControlSocket, AHandlerMayEndTheProgramOrTheServer) {
  const FileDescriptor first = Connect();
  Send(first, "quit\n");
  handler_ = []() -> std::string { throw base::ProcessEnded(); };
  EXPECT_THROW(RunFor(1s), base::ProcessEnded);
  EXPECT_EQ("closed", Receive(first));
  handler_ = [this] {
    server_.reset();
    return std::string("ok\n");
  };
  EXPECT_EQ("ok\n", Ask("quit"));
  EXPECT_EQ(0U, loop_.watched());
}

TEST_F(ControlSocket, AProgramThatDoesNotAnswerIsGivenUp) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(75, test::ErrorNumberOf([this] { return ControlClient(path_, 50ms).Ask("list"); }));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST_F(ControlSocket, AnotherUsersProgramIsNotServed) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  fs::permissions(folder_.path(), fs::perms(0777));
  ASSERT_EQ(0, ::chmod(path_.c_str(), 0666));
  // A thread of its own: the system call itself changes the user of one thread only.
  auto reply = std::async(std::launch::async, [this]() -> std::string {
    if (::syscall(SYS_setresuid, -1, 12345, -1) != 0) return "cannot become another user";
    FileDescriptor socket = adapters::NewLocalSocket();
    if (adapters::ConnectTo(socket, path_) != 0) return "cannot connect";
    Send(socket, "list\n");
    std::array<char, 16> block{};
    pollfd readable{socket.get(), POLLIN, 0};
    ::poll(&readable, 1, 5000);
    const ssize_t count = ::recv(socket.get(), block.data(), block.size(), 0);
    return count > 0 ? "served" : "closed";
  });
  EXPECT_EQ("closed", RunUntilReady(std::move(reply)));
  EXPECT_TRUE(requests_.empty());
}

}  // namespace
}  // namespace kestro
