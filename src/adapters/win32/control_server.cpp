#include "adapters/win32/control_server.h"

#include <array>

#include "adapters/win32/system_error.h"

namespace kestro::adapters {
namespace {

constexpr UINT kSocketEvent = WM_APP + 0x53;
constexpr int kBacklog = 8;

[[noreturn]] void Raise() {
  base::RaiseFileError(base::kPathAccessError,
                       SystemErrorText(static_cast<std::uint32_t>(::WSAGetLastError())));
}

void SendAll(const Socket& socket, std::string_view text) {
  // The few bytes of a reply always find room in the buffer of a fresh connection.
  ::send(socket.get(), text.data(), static_cast<int>(text.size()), 0);
}

}  // namespace

ControlServer::ControlServer(HiddenWindow& window, std::uint16_t port, Handler handler)
    : window_(window), handler_(std::move(handler)), listener_(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
  if (!listener_) Raise();
  const BOOL exclusive = TRUE;
  ::setsockopt(listener_.get(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&exclusive),
               sizeof(exclusive));
  const sockaddr_in address = LoopbackAddress(port);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  if (::bind(listener_.get(), generic, sizeof(address)) != 0) Raise();
  window_.On(kSocketEvent, [this](WPARAM socket, LPARAM event) -> LRESULT {
    OnEvent(socket, WSAGETSELECTEVENT(event));
    return 0;
  });
  const bool listens = ::WSAAsyncSelect(listener_.get(), window_.handle(), kSocketEvent, FD_ACCEPT) == 0 &&
                       ::listen(listener_.get(), kBacklog) == 0;
  if (listens) return;
  window_.On(kSocketEvent, {});
  Raise();
}

ControlServer::~ControlServer() { window_.On(kSocketEvent, {}); }

void ControlServer::OnEvent(SOCKET socket, long event) {
  if (event == FD_ACCEPT) return OnConnection();
  if (event == FD_READ) return OnReadable(socket);
  connections_.erase(socket);
}

void ControlServer::OnConnection() {
  Socket socket(::accept(listener_.get(), nullptr, nullptr));
  if (!socket || connections_.size() >= kMaximumConnections) return;
  const BOOL at_once = TRUE;
  ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&at_once),
               sizeof(at_once));
  if (::WSAAsyncSelect(socket.get(), window_.handle(), kSocketEvent, FD_READ | FD_CLOSE) != 0) return;
  const SOCKET key = socket.get();
  connections_[key].socket = std::move(socket);
}

void ControlServer::OnReadable(SOCKET socket) {
  const auto connection = connections_.find(socket);
  if (connection == connections_.end()) return;
  std::array<char, kMaximumRequestBytes> block{};
  const int count = ::recv(socket, block.data(), static_cast<int>(block.size()), 0);
  if (count <= 0) return;
  std::string& received = connection->second.received;
  received.append(block.data(), static_cast<std::size_t>(count));
  if (received.find('\n') != std::string::npos) return Serve(socket);
  if (received.size() > kMaximumRequestBytes) connections_.erase(connection);
}

void ControlServer::Serve(SOCKET socket) {
  // Taken off the list first: the handler may run the event loop again.
  auto node = connections_.extract(socket);
  const Connection& connection = node.mapped();
  std::string_view line = std::string_view(connection.received).substr(0, connection.received.find('\n'));
  if (line.ends_with('\r')) line.remove_suffix(1);
  SendAll(connection.socket, handler_(line));
  ::shutdown(connection.socket.get(), SD_SEND);
}

}  // namespace kestro::adapters
