#pragma once

// Memory of this process, as the Linux kernel counts it.

#include <cstdint>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro::bench {

/// Entry of /proc/self/status, in bytes.
inline std::int64_t StatusBytes(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::stoll(line.substr(name.size())) * 1024;
  }
  throw std::runtime_error("There is no " + std::string(name) + " in /proc/self/status");
}

/// What the process occupies beyond what it occupied when this was made.
class MemoryGrowth {
 public:
  /// Gives unused memory back first: what earlier work left behind must not hide a growth.
  MemoryGrowth() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): after what comes before it
    start_ = StatusBytes("VmRSS:");
  }
  [[nodiscard]] std::int64_t Now() const { return StatusBytes("VmRSS:") - start_; }
  [[nodiscard]] std::int64_t Peak() const { return StatusBytes("VmHWM:") - start_; }

 private:
  std::int64_t start_;
};

}  // namespace kestro::bench
