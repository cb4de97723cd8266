#pragma once

#include <string>

namespace kestro::adapters {

/// The toolkit that runs, not the one that was built with, and what it draws on: "Qt 6.4.2, wayland".
[[nodiscard]] std::string ToolkitVersion();

}  // namespace kestro::adapters
