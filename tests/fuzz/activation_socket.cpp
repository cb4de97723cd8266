#include "adapters/posix/activation_socket.h"

#include <sys/socket.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "core/dial_link.h"
#include "fuzz/property.h"
#include "support/polling_watcher.h"
#include "unit/support/temporary_folder.h"

// The activation socket: each input is a datagram. Only the one message does
// something, and it still does after whatever came before it.

namespace kestro::fuzz {
namespace {

using Request = adapters::ActivationSocket::Request;

class Server {
 public:
  /// What the message asked for; nothing when it was dropped.
  std::optional<Request> Send(std::string_view text) {
    request_.reset();
    const adapters::FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_un address = adapters::SocketAddress(path_);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    static_cast<void>(::sendto(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT, generic,
                               sizeof(address)));
    loop_.RunOnce(0);
    return request_;
  }

 private:
  test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("activate.sock").string();
  test::PollingWatcher loop_;
  std::optional<Request> request_;
  adapters::ActivationSocket socket_{loop_, path_, [this](const Request& request) { request_ = request; }};
};

}  // namespace

void Check(std::string_view text) {
  static Server server;  // one for all inputs: what an input leaves behind shows at the next one
  const auto request = server.Send(text);
  const bool activates = request && !request->number;
  Require(activates == (text == "activate"), "another message activates, or that one does not");
  if (request && request->number && !request->number->empty()) {
    Require(core::IsLinkNumber(*request->number), "something else than a number is to be dialled");
  }
  const auto last = server.Send("activate");
  Require(last && !last->number, "the message is not heard any more");
}

}  // namespace kestro::fuzz
