#include "adapters/posix/activation_socket.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <unistd.h>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"
#include "core/dial_link.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kActivate = "activate";
constexpr std::string_view kDial = "dial ";
constexpr std::size_t kLongestMessage = kDial.size() + 1 + core::kMostLinkDigits;
constexpr int kMostMessagesAtOnce = 64;

/// What it receives tells who sent it.
FileDescriptor NewActivationSocket() {
  FileDescriptor socket = NewLocalSocket(SOCK_DGRAM);
  const int on = 1;
  if (::setsockopt(socket.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof(on)) != 0) {
    RaiseSystemError(errno, base::kPathNotFound);
  }
  return socket;
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

std::optional<ActivationSocket::Request> RequestIn(std::string_view message) {
  if (message == kActivate) return ActivationSocket::Request{};
  if (!message.starts_with(kDial)) return std::nullopt;
  const std::string_view number = message.substr(kDial.size());
  if (!number.empty() && !core::IsLinkNumber(number)) return std::nullopt;
  return ActivationSocket::Request{std::string(number)};
}

/// False when there is no message; one that counts for nothing leaves `request` empty.
bool ReceiveOne(const FileDescriptor& socket, std::optional<ActivationSocket::Request>& request) {
  std::array<char, kLongestMessage + 1> text{};  // a longer one is cut off and then no match
  iovec part{text.data(), text.size()};
  AncillaryBuffer ancillary;
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = ancillary.bytes.data();
  message.msg_controllen = ancillary.bytes.size();
  const ssize_t size = ::recvmsg(socket.get(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
  if (size < 0) return errno == EINTR;
  if (IsFromThisUser(message)) request = RequestIn({text.data(), static_cast<std::size_t>(size)});
  return true;
}

bool Send(const std::string& socket_path, std::string_view message) {
  try {
    const FileDescriptor socket = NewLocalSocket(SOCK_DGRAM);
    const sockaddr_un address = SocketAddress(socket_path);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    const ssize_t sent = ::sendto(socket.get(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                                  generic, sizeof(address));
    return sent == static_cast<ssize_t>(message.size());
  } catch (const base::RuntimeError&) {
    return false;  // no socket to be had, or no path for one: then nobody listens there either
  }
}

}  // namespace

ActivationSocket::ActivationSocket(DescriptorWatcher& watcher, std::string socket_path, Handler handler)
    : watcher_(watcher),
      handler_(std::move(handler)),
      socket_(NewActivationSocket()),
      file_(socket_, std::move(socket_path)) {
  watcher_.Watch(socket_.get(), [this] { OnReadable(); });
}

ActivationSocket::~ActivationSocket() { watcher_.Unwatch(socket_.get()); }

void ActivationSocket::OnReadable() {
  std::optional<Request> chosen;
  for (int count = 0; count < kMostMessagesAtOnce; ++count) {
    std::optional<Request> request;
    if (!ReceiveOne(socket_, request)) break;
    const bool is_first_link = request && request->number && !(chosen && chosen->number);
    if (is_first_link || !chosen) chosen = std::move(request);
  }
  if (!chosen) return;
  const Handler handler = handler_;  // outlives this object, should it be destroyed meanwhile
  handler(*chosen);
}

std::string ActivationSocketPath(const RuntimeFolder& folder) { return folder.path() + "/activate.sock"; }

bool RequestActivation(const std::string& socket_path) { return Send(socket_path, kActivate); }

bool RequestDialling(const std::string& socket_path, std::string_view number) {
  return Send(socket_path, std::string(kDial).append(number));
}

}  // namespace kestro::adapters
