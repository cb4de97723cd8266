#include "adapters/posix/activation_socket.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kMessage = "activate";
constexpr mode_t kUserOnly = 0600;
constexpr int kMostMessagesAtOnce = 64;

[[noreturn]] void Raise() { RaiseSystemError(errno, base::kPathNotFound); }

FileDescriptor NewDatagramSocket() {
  FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket) Raise();
  return socket;
}

/// 0, or errno.
int Bind(const FileDescriptor& socket, const std::string& path) {
  const sockaddr_un address = SocketAddress(path);
  return ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 ? 0 : errno;
}

/// A socket file that nobody listens at.
bool IsStale(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) return false;
  return ConnectTo(NewDatagramSocket(), path) == ECONNREFUSED;
}

/// Room for the sender's credentials and nothing more: descriptors sent along are
/// dropped by the system.
struct alignas(cmsghdr) AncillaryBuffer {
  std::array<char, CMSG_SPACE(sizeof(ucred))> bytes{};
};

bool IsFromThisUser(msghdr& message) {
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  const bool is_credentials = header != nullptr && header->cmsg_level == SOL_SOCKET &&
                              header->cmsg_type == SCM_CREDENTIALS &&
                              header->cmsg_len == CMSG_LEN(sizeof(ucred));
  if (!is_credentials) return false;
  ucred sender{};
  std::memcpy(&sender, CMSG_DATA(header), sizeof(sender));
  return sender.uid == ::geteuid();
}

enum class Received { kRequest, kOther, kNothing };

Received ReceiveOne(const FileDescriptor& socket) {
  std::array<char, kMessage.size() + 1> text{};  // a longer one is cut off and then no match
  iovec part{text.data(), text.size()};
  AncillaryBuffer ancillary;
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = ancillary.bytes.data();
  message.msg_controllen = ancillary.bytes.size();
  const ssize_t size = ::recvmsg(socket.get(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
  if (size < 0) return errno == EINTR ? Received::kOther : Received::kNothing;
  const bool matches = std::string_view(text.data(), static_cast<std::size_t>(size)) == kMessage;
  return matches && IsFromThisUser(message) ? Received::kRequest : Received::kOther;
}

}  // namespace

ActivationSocket::ActivationSocket(DescriptorWatcher& watcher, std::string socket_path, Handler handler)
    : watcher_(watcher),
      path_(std::move(socket_path)),
      handler_(std::move(handler)),
      socket_(NewDatagramSocket()) {
  const int on = 1;
  if (::setsockopt(socket_.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof(on)) != 0) Raise();
  // The socket file gets the mode of the socket: at no moment is it open to others.
  if (::fchmod(socket_.get(), kUserOnly) != 0) Raise();
  BindReplacingStaleSocket();
  struct stat status {};
  if (::lstat(path_.c_str(), &status) != 0) Raise();
  device_ = status.st_dev;
  inode_ = status.st_ino;
  watcher_.Watch(socket_.get(), [this] { OnReadable(); });
}

ActivationSocket::~ActivationSocket() {
  watcher_.Unwatch(socket_.get());
  struct stat status {};
  const bool is_ours =
      ::lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
  if (is_ours) ::unlink(path_.c_str());
}

void ActivationSocket::BindReplacingStaleSocket() {
  int error = Bind(socket_, path_);
  if (error == EADDRINUSE && IsStale(path_)) {
    if (::unlink(path_.c_str()) != 0) Raise();
    error = Bind(socket_, path_);
  }
  if (error == EADDRINUSE) RaiseError(base::kFileAlreadyExists, path_ + " is in use");
  if (error != 0) RaiseSystemError(error, base::kPathNotFound);
}

void ActivationSocket::OnReadable() {
  bool requested = false;
  for (int count = 0; count < kMostMessagesAtOnce; ++count) {
    const Received received = ReceiveOne(socket_);
    if (received == Received::kNothing) break;
    requested |= received == Received::kRequest;
  }
  if (!requested) return;
  const Handler handler = handler_;  // outlives this object, should it be destroyed meanwhile
  handler();
}

std::string ActivationSocketPath(const RuntimeFolder& folder) { return folder.path() + "/activate.sock"; }

bool RequestActivation(const std::string& socket_path) {
  try {
    const FileDescriptor socket = NewDatagramSocket();
    const sockaddr_un address = SocketAddress(socket_path);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    const ssize_t sent = ::sendto(socket.get(), kMessage.data(), kMessage.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                                  generic, sizeof(address));
    return sent == static_cast<ssize_t>(kMessage.size());
  } catch (const base::RuntimeError&) {
    return false;  // no socket to be had, or no path for one: then nobody listens there either
  }
}

}  // namespace kestro::adapters
