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

namespace {

using kestro::fuzz::Require;

using Request = kestro::adapters::ActivationSocket::Request;

class Server {
 public:
  /// What the message asked for; nothing when it was dropped.
  std::optional<Request> Send(std::string_view text) {
    request_.reset();
    const kestro::adapters::FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_un address = kestro::adapters::SocketAddress(path_);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    static_cast<void>(::sendto(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT, generic,
                               sizeof(address)));
    loop_.RunOnce(0);
    return request_;
  }
  bool Activate() {
    request_.reset();
    Require(kestro::adapters::RequestActivation(path_), "nobody listens");
    loop_.RunOnce(0);
    return request_ && !request_->number;
  }

 private:
  kestro::test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("activate.sock").string();
  kestro::test::PollingWatcher loop_;
  std::optional<Request> request_;
  kestro::adapters::ActivationSocket socket_{loop_, path_,
                                             [this](const Request& request) { request_ = request; }};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Server server;  // one for all inputs: what an input leaves behind shows at the next one
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  const auto request = server.Send(text);
  Require(text != "activate" || (request && !request->number), "the message does not activate");
  if (request && !request->number) Require(text == "activate", "another message activates");
  if (request && request->number && !request->number->empty()) {
    Require(kestro::core::IsLinkNumber(*request->number), "something else than a number is to be dialled");
  }
  Require(server.Activate(), "the message is not heard any more");
  return 0;
}
