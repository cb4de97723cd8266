#include "adapters/posix/activation_socket.h"

#include <sys/socket.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "fuzz/poll_once.h"
#include "fuzz/property.h"
#include "unit/support/temporary_folder.h"

// The activation socket: each input is a datagram. Only the one message does
// something, and it still does after whatever came before it.

namespace {

using kestro::fuzz::Require;

class Server {
 public:
  int Send(std::string_view text) {
    activations_ = 0;
    const kestro::adapters::FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_un address = kestro::adapters::SocketAddress(path_);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    static_cast<void>(::sendto(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT, generic,
                               sizeof(address)));
    loop_.Run();
    return activations_;
  }
  int Activate() {
    activations_ = 0;
    Require(kestro::adapters::RequestActivation(path_), "nobody listens");
    loop_.Run();
    return activations_;
  }

 private:
  kestro::test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("activate.sock").string();
  kestro::fuzz::PollOnce loop_;
  int activations_ = 0;
  kestro::adapters::ActivationSocket socket_{loop_, path_, [this] { ++activations_; }};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Server server;  // one for all inputs: what an input leaves behind shows at the next one
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  Require(server.Send(text) == (text == "activate" ? 1 : 0),
          "another message activates, or this one does not");
  Require(server.Activate() == 1, "the message is not heard any more");
  return 0;
}
