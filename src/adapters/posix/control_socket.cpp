#include "adapters/posix/control_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr int kBacklog = 8;

/// As much as the socket takes without waiting; a program that does not read its reply loses it.
void Send(const FileDescriptor& socket, std::string_view text) {
  while (!text.empty()) {
    const ssize_t sent = ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
}

enum class Received { kSome, kNothingYet, kEnd };

Received ReceiveInto(std::string& received, const FileDescriptor& socket) {
  std::array<char, ControlSocketServer::kMaximumRequestBytes> block{};
  const ssize_t count = ::recv(socket.get(), block.data(), block.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return Received::kNothingYet;
  if (count <= 0) return Received::kEnd;
  received.append(block.data(), static_cast<std::size_t>(count));
  return Received::kSome;
}

}  // namespace

ControlSocketServer::ControlSocketServer(DescriptorWatcher& watcher, std::string socket_path, Handler handler)
    : watcher_(watcher),
      handler_(std::move(handler)),
      listener_(NewLocalSocket()),
      file_(listener_, std::move(socket_path)) {
  if (::listen(listener_.get(), kBacklog) != 0) RaiseSystemError(errno, base::kPathNotFound);
  watcher_.Watch(listener_.get(), [this] { OnConnection(); });
}

ControlSocketServer::~ControlSocketServer() {
  watcher_.Unwatch(listener_.get());
  for (const Connection& connection : connections_) watcher_.Unwatch(connection.socket.get());
}

void ControlSocketServer::OnConnection() {
  FileDescriptor socket(::accept4(listener_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (!socket) {
    const bool no_descriptor_left = errno == EMFILE || errno == ENFILE;
    // The connection stays in the queue and would keep the event loop busy: the
    // program goes on without the socket rather than with a burning processor.
    if (no_descriptor_left && connections_.empty()) watcher_.Unwatch(listener_.get());
    if (no_descriptor_left && !connections_.empty()) static_cast<void>(Take(connections_.begin()));
    return;
  }
  if (!IsPeerThisUser(socket)) return;
  if (connections_.size() == kMaximumConnections) static_cast<void>(Take(connections_.begin()));
  const int descriptor = socket.get();
  connections_.push_back({std::move(socket), {}});
  watcher_.Watch(descriptor, [this, descriptor] { OnReadable(descriptor); });
}

void ControlSocketServer::OnReadable(int descriptor) {
  const auto connection =
      std::find_if(connections_.begin(), connections_.end(),
                   [descriptor](const auto& one) { return one.socket.get() == descriptor; });
  if (connection == connections_.end()) return;
  const Received received = ReceiveInto(connection->received, connection->socket);
  if (received == Received::kNothingYet) return;
  const std::string& text = connection->received;
  if (text.find('\n') != std::string::npos) return Serve(connection);
  if (received == Received::kSome && text.size() <= kMaximumRequestBytes) return;
  const char* const reply = received == Received::kEnd ? "error: the request has no line end\n"
                                                       : "error: the request is too long\n";
  Send(Take(connection).socket, reply);
}

void ControlSocketServer::Serve(Connections::iterator connection) {
  const Connection served = Take(connection);
  const std::size_t end = served.received.find('\n');
  if (end > kMaximumRequestBytes) return Send(served.socket, "error: the request is too long\n");
  if (end + 1 != served.received.size()) return Send(served.socket, "error: more than one line\n");
  const Handler handler = handler_;  // outlives this object, should it be destroyed meanwhile
  const std::string reply = handler(std::string_view(served.received).substr(0, end));
  Send(served.socket, std::string_view(reply).substr(0, kMaximumReplyBytes));
}

ControlSocketServer::Connection ControlSocketServer::Take(Connections::iterator connection) {
  watcher_.Unwatch(connection->socket.get());
  Connection taken = std::move(*connection);
  connections_.erase(connection);
  return taken;
}

}  // namespace kestro::adapters
