#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/posix/descriptor_watcher.h"
#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/runtime_folder.h"
#include "adapters/posix/socket_file.h"

namespace kestro::adapters {

/// Where a program started a second time reaches the running one: a datagram
/// socket that understands two messages, "activate" (come to the front) and "dial"
/// with the number of a link or with nothing for a link without one. Anything
/// else, and whatever other users send, is dropped without an effect.
///
/// The socket file has mode 0600 and goes with the object. User-interface thread
/// only; nothing here waits.
class ActivationSocket {
 public:
  struct Request {
    /// For Application::DialLink; nothing = come to the front.
    std::optional<std::string> number;
  };
  /// May do anything, destroy the object included. Requests that arrived together
  /// are one call, the first link if there is one among them. What it throws goes
  /// on to the event loop.
  using Handler = std::function<void(const Request&)>;

  /// The socket file of a program that is gone is replaced. Raises 58 when another
  /// program listens there or something else has the name, 75 or 76 for other
  /// failures. The watcher must outlive the object.
  ActivationSocket(DescriptorWatcher& watcher, std::string socket_path, Handler handler);
  ~ActivationSocket();
  ActivationSocket(const ActivationSocket&) = delete;
  ActivationSocket& operator=(const ActivationSocket&) = delete;

 private:
  void OnReadable();

  DescriptorWatcher& watcher_;
  Handler handler_;
  FileDescriptor socket_;
  SocketFile file_;
};

[[nodiscard]] std::string ActivationSocketPath(const RuntimeFolder& folder);

/// Send a message. False when nobody took it; never wait, raise nothing.
bool RequestActivation(const std::string& socket_path);
/// `number` as core::NumberOfLink delivers it.
bool RequestDialling(const std::string& socket_path, std::string_view number);

}  // namespace kestro::adapters
