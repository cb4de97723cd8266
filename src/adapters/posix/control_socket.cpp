#include "adapters/posix/control_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr mode_t kUserOnly = 0600;
constexpr mode_t kPermissionBits = 07777;
constexpr int kBacklog = 8;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kPathNotFound); }

/// 0, or errno.
int Bind(const FileDescriptor& listener, const std::string& path) {
  const sockaddr_un address = SocketAddress(path);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  return ::bind(listener.get(), generic, sizeof(address)) == 0 ? 0 : errno;
}

/// A socket file that nobody listens at.
bool IsStale(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) return false;
  return ConnectTo(NewLocalSocket(), path) == ECONNREFUSED;
}

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
      path_(std::move(socket_path)),
      handler_(std::move(handler)),
      listener_(NewLocalSocket()) {
  BindReplacingStaleSocket();
  try {
    Listen();
  } catch (...) {
    ::unlink(path_.c_str());
    throw;
  }
  watcher_.Watch(listener_.get(), [this] { OnConnection(); });
}

ControlSocketServer::~ControlSocketServer() {
  watcher_.Unwatch(listener_.get());
  for (const Connection& connection : connections_) watcher_.Unwatch(connection.socket.get());
  struct stat status {};
  const bool is_ours =
      ::lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
  if (is_ours) ::unlink(path_.c_str());
}

void ControlSocketServer::BindReplacingStaleSocket() {
  int error = Bind(listener_, path_);
  if (error == EADDRINUSE && IsStale(path_)) {
    if (::unlink(path_.c_str()) != 0) Raise();
    error = Bind(listener_, path_);
  }
  if (error == EADDRINUSE) RaiseError(base::kFileAlreadyExists, path_ + " is in use");
  if (error != 0) RaiseSystemError(error, base::kPathNotFound);
}

/// Nobody can connect before the listening, so the mode counts from the first connection on.
void ControlSocketServer::Listen() {
  struct stat status {};
  if (::chmod(path_.c_str(), kUserOnly) != 0 || ::lstat(path_.c_str(), &status) != 0) Raise();
  if (!S_ISSOCK(status.st_mode) || (status.st_mode & kPermissionBits) != kUserOnly) {
    RaiseError(base::kPathAccessError, path_);
  }
  device_ = status.st_dev;
  inode_ = status.st_ino;
  if (::listen(listener_.get(), kBacklog) != 0) Raise();
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
