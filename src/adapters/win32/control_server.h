#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <winsock2.h>

#include "adapters/win32/hidden_window.h"
#include "adapters/win32/local_socket.h"

namespace kestro::adapters {

/// Takes requests from other programs of this machine over a TCP port of the
/// loopback address: one connection, one line, one reply, closed.
///
/// Everything happens on the window's thread, from its event loop; nothing here
/// waits. Any program of the machine can connect: this is for tests and
/// demonstrations.
class ControlServer {
 public:
  /// Gets the line without its line feed and returns the reply. Must not throw.
  using Handler = std::function<std::string(std::string_view request)>;

  static constexpr std::size_t kMaximumRequestBytes = 4096;
  static constexpr std::size_t kMaximumConnections = 8;

  /// Listens at once. Raises base::RuntimeError (75) when the port cannot be
  /// had. The window must outlive the object.
  ControlServer(HiddenWindow& window, std::uint16_t port, Handler handler);
  ~ControlServer();
  ControlServer(const ControlServer&) = delete;
  ControlServer& operator=(const ControlServer&) = delete;

 private:
  struct Connection {
    Socket socket;
    std::string received;
  };

  void OnEvent(SOCKET socket, long event);
  void OnConnection();
  void OnReadable(SOCKET socket);
  void Serve(SOCKET socket);

  SocketLibrary library_;
  HiddenWindow& window_;
  Handler handler_;
  Socket listener_;
  std::map<SOCKET, Connection> connections_;
};

}  // namespace kestro::adapters
