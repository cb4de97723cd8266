#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestro::adapters {

/// Sends a line to a ControlServer of this machine and waits for its whole
/// reply; nothing when no program listens at the port. Raises base::RuntimeError
/// (75) when the program does not answer within ten seconds.
[[nodiscard]] std::optional<std::string> AskControlServer(std::uint16_t port, std::string_view line);

}  // namespace kestro::adapters
