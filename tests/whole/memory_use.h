#pragma once

#include <cstddef>

namespace kestro::test {

struct MemoryUse {
  std::size_t resident = 0;   // bytes of the process in memory
  std::size_t allocated = 0;  // bytes handed out by the allocator and not given back
};

/// What the process uses now. With the address sanitizer in the program its own
/// allocator is asked, and `resident` says nothing about the application.
[[nodiscard]] MemoryUse ReadMemoryUse();

[[nodiscard]] bool HasAddressSanitizer();

}  // namespace kestro::test
