#include "adapters/win32/control_client.h"

#include <array>

#include "adapters/win32/local_socket.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

constexpr DWORD kTimeoutMs = 10'000;
constexpr std::size_t kMaximumReplyBytes = std::size_t{64} * 1024;

}  // namespace

std::optional<std::string> AskControlServer(std::uint16_t port, std::string_view line) {
  const SocketLibrary library;
  const Socket socket(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
  ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&kTimeoutMs),
               sizeof(kTimeoutMs));
  const sockaddr_in address = LoopbackAddress(port);
  if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
    return std::nullopt;
  }
  const std::string request = std::string(line) + "\n";
  ::send(socket.get(), request.data(), static_cast<int>(request.size()), 0);
  std::string reply;
  std::array<char, 4096> block{};
  for (int count = 1; count > 0 && reply.size() <= kMaximumReplyBytes;) {
    count = ::recv(socket.get(), block.data(), static_cast<int>(block.size()), 0);
    if (count > 0) reply.append(block.data(), static_cast<std::size_t>(count));
  }
  if (reply.empty()) base::RaiseFileError(base::kPathAccessError, "the program does not answer");
  return reply;
}

}  // namespace kestro::adapters
