#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kestro::adapters {

/// The other end of ControlSocketServer: sends a request to the running program.
/// Waits for the reply; not for the user-interface thread of a program.
class ControlClient {
 public:
  static constexpr std::size_t kMaximumReplyBytes = 64UL * 1024UL;
  static constexpr std::chrono::milliseconds kTimeout{10'000};

  explicit ControlClient(std::string socket_path, std::chrono::milliseconds timeout = kTimeout)
      : path_(std::move(socket_path)), timeout_(timeout) {}

  /// The whole reply to the line (without a line feed); nothing when no program
  /// listens. Raises 75 when the program does not answer in time, answers with
  /// too much or nothing, or does not belong to this user.
  [[nodiscard]] std::optional<std::string> Ask(std::string_view line) const;

 private:
  std::string path_;
  std::chrono::milliseconds timeout_;
};

}  // namespace kestro::adapters
