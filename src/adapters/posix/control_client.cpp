#include "adapters/posix/control_client.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

#include "adapters/posix/local_socket.h"
#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void RaiseNoAnswer(std::string_view reason) {
  base::RaiseFileError(base::kPathAccessError, reason);
}

void WaitFor(const FileDescriptor& socket, short events, Clock::time_point deadline) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd descriptor{socket.get(), events, 0};
    const int result = ::poll(&descriptor, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    if (result > 0) return;
    if (result == 0) RaiseNoAnswer("the program does not answer");
    if (errno != EINTR) RaiseSystemError(errno, base::kPathNotFound);
  }
}

void Send(const FileDescriptor& socket, std::string_view text, Clock::time_point deadline) {
  while (!text.empty()) {
    WaitFor(socket, POLLOUT, deadline);
    const ssize_t sent = ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL);
    if (sent < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    // A program that refuses the request early says why and closes: the reply is still to be read.
    if (sent < 0 && (errno == EPIPE || errno == ECONNRESET)) return;
    if (sent < 0) RaiseSystemError(errno, base::kPathNotFound);
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::string Receive(const FileDescriptor& socket, Clock::time_point deadline) {
  std::string reply;
  std::array<char, 4096> block{};
  while (true) {
    WaitFor(socket, POLLIN, deadline);
    const ssize_t count = ::recv(socket.get(), block.data(), block.size(), 0);
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (count < 0 && errno != ECONNRESET) RaiseSystemError(errno, base::kPathNotFound);
    if (count <= 0) return reply;
    reply.append(block.data(), static_cast<std::size_t>(count));
    if (reply.size() > ControlClient::kMaximumReplyBytes) RaiseNoAnswer("the reply is too long");
  }
}

}  // namespace

std::optional<std::string> ControlClient::Ask(std::string_view line) const {
  const auto deadline = Clock::now() + timeout_;
  const FileDescriptor socket = NewLocalSocket();
  const int error = ConnectTo(socket, path_);
  if (error == ENOENT || error == ECONNREFUSED) return std::nullopt;
  if (error == EAGAIN) RaiseNoAnswer("the program does not answer");
  if (error != 0) RaiseSystemError(error, base::kPathNotFound);
  if (!IsPeerThisUser(socket)) RaiseNoAnswer("the program is another user's");
  Send(socket, std::string(line) + "\n", deadline);
  std::string reply = Receive(socket, deadline);
  if (reply.empty()) RaiseNoAnswer("the program ended without an answer");
  return reply;
}

}  // namespace kestro::adapters
