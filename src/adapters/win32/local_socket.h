#pragma once

#include <cstdint>
#include <utility>
#include <winsock2.h>

namespace kestro::adapters {

/// The sockets of this process are usable while one of these lives.
class SocketLibrary {
 public:
  SocketLibrary() {
    WSADATA data{};
    started_ = ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }
  ~SocketLibrary() {
    if (started_) ::WSACleanup();
  }
  SocketLibrary(const SocketLibrary&) = delete;
  SocketLibrary& operator=(const SocketLibrary&) = delete;

 private:
  bool started_ = false;
};

/// Owns a socket.
class Socket {
 public:
  Socket() = default;
  explicit Socket(SOCKET socket) : socket_(socket) {}
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  Socket(Socket&& other) noexcept : socket_(std::exchange(other.socket_, INVALID_SOCKET)) {}
  Socket& operator=(Socket&& other) noexcept {
    std::swap(socket_, other.socket_);
    return *this;
  }
  ~Socket() {
    if (socket_ != INVALID_SOCKET) ::closesocket(socket_);
  }

  [[nodiscard]] SOCKET get() const { return socket_; }
  explicit operator bool() const { return socket_ != INVALID_SOCKET; }

 private:
  SOCKET socket_ = INVALID_SOCKET;
};

/// The port on this machine's own address: nobody from outside gets there.
[[nodiscard]] inline sockaddr_in LoopbackAddress(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = ::htons(port);
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace kestro::adapters
