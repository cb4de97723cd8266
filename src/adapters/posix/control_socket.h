#pragma once

#include <functional>
#include <list>
#include <string>
#include <string_view>

#include "adapters/posix/descriptor_watcher.h"
#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/socket_file.h"

namespace kestro::adapters {

/// Takes requests from other programs of the same user: one connection, one
/// line, one reply, closed.
///
/// The socket file has mode 0600 and goes with the object. User-interface
/// thread only; nothing here ever waits. The handler may run the event loop
/// again, so another request may be handled in between; it may even destroy the
/// server.
class ControlSocketServer {
 public:
  /// Gets the line without its line feed and returns the reply. What it throws
  /// goes on to the event loop; the connection is then closed without a reply.
  using Handler = std::function<std::string(std::string_view request)>;

  static constexpr std::size_t kMaximumRequestBytes = 4096;
  static constexpr std::size_t kMaximumReplyBytes = 64UL * 1024UL;
  static constexpr std::size_t kMaximumConnections = 8;

  /// Listens at once. The socket file of a program that is gone is replaced.
  /// Raises 58 when another program listens there or something else has the
  /// name, 75 or 76 for other failures. The watcher must outlive the object.
  ControlSocketServer(DescriptorWatcher& watcher, std::string socket_path, Handler handler);
  ~ControlSocketServer();
  ControlSocketServer(const ControlSocketServer&) = delete;
  ControlSocketServer& operator=(const ControlSocketServer&) = delete;

 private:
  struct Connection {
    FileDescriptor socket;
    std::string received;
  };
  using Connections = std::list<Connection>;

  void OnConnection();
  void OnReadable(int descriptor);
  void Serve(Connections::iterator connection);
  /// Takes the connection off the list; it is closed when the result goes.
  [[nodiscard]] Connection Take(Connections::iterator connection);

  DescriptorWatcher& watcher_;
  Handler handler_;
  FileDescriptor listener_;
  SocketFile file_;
  Connections connections_;  // waiting for their request, the oldest first
};

}  // namespace kestro::adapters
