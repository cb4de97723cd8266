#include "adapters/posix/control_socket.h"

#include <algorithm>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "fuzz/property.h"
#include "support/polling_watcher.h"
#include "unit/support/temporary_folder.h"

// The control socket: the input arrives in two pieces (the first byte says where
// it is cut), then the other side has nothing more to say. The handler gets
// whole lines only, and everybody gets one reply.

namespace kestro::fuzz {
namespace {

using adapters::ControlSocketServer;

class Server {
 public:
  static constexpr std::string_view kReply = "ok\n";

  std::string Exchange(std::string_view first, std::string_view second) {
    requests = 0;
    const auto socket = adapters::NewLocalSocket();
    Require(adapters::ConnectTo(socket, path_) == 0, "the server does not listen");
    loop_.RunOnce(0);
    Send(socket.get(), first);
    loop_.RunOnce(0);
    Send(socket.get(), second);
    ::shutdown(socket.get(), SHUT_WR);
    loop_.RunOnce(0);
    loop_.RunOnce(0);
    std::string reply(256, '\0');
    const ssize_t size = ::recv(socket.get(), reply.data(), reply.size(), MSG_DONTWAIT);
    reply.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return reply;
  }

  int requests = 0;

 private:
  static void Send(int socket, std::string_view text) {
    static_cast<void>(::send(socket, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
  }
  std::string Handle(std::string_view request) {
    ++requests;
    Require(request.find('\n') == std::string_view::npos, "more than a line");
    Require(request.size() <= ControlSocketServer::kMaximumRequestBytes, "too long a line");
    return std::string(kReply);
  }

  test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("control.sock").string();
  test::PollingWatcher loop_;
  ControlSocketServer server_{loop_, path_, [this](std::string_view request) { return Handle(request); }};
};

}  // namespace

void Check(std::string_view text) {
  static Server server;  // one for all inputs: what an input leaves behind shows at the next one
  const std::uint8_t first = TakeByte(text);
  const std::size_t cut = std::min<std::size_t>(first, text.size());
  const std::string reply = server.Exchange(text.substr(0, cut), text.substr(cut));
  const bool one_line = text.find('\n') != std::string_view::npos && text.find('\n') + 1 == text.size() &&
                        text.size() <= ControlSocketServer::kMaximumRequestBytes;
  if (one_line) Require(server.requests == 1 && reply == Server::kReply, "a request was lost");
  Require(server.requests <= 1, "more than one request");
  Require(server.requests == 1 || reply.starts_with("error: "), "neither carried out nor refused");
}

}  // namespace kestro::fuzz
