#pragma once

#include <chrono>
#include <string>

namespace kestro::adapters {

/// "2026-11-21 17:03:05.123", local time.
[[nodiscard]] std::string LogTime(std::chrono::system_clock::time_point time);

}  // namespace kestro::adapters
