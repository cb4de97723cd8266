#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestro::programs {

/// The running program's reply to a request line; nothing when none runs on the
/// software exchange. Raises base::RuntimeError when it does not answer.
[[nodiscard]] std::optional<std::string> AskRunningProgram(std::string_view line);

}  // namespace kestro::programs
