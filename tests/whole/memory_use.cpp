#include "whole/memory_use.h"

#include <fstream>
#include <malloc.h>
#include <unistd.h>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's own name; null without it
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace kestro::test {
namespace {

std::size_t ResidentBytes() {
  std::ifstream in("/proc/self/statm");
  std::size_t total_pages = 0;
  std::size_t resident_pages = 0;
  in >> total_pages >> resident_pages;
  return resident_pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

std::size_t AllocatedBytes() {
  if (HasAddressSanitizer()) return __sanitizer_get_current_allocated_bytes();
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace

bool HasAddressSanitizer() { return __sanitizer_get_current_allocated_bytes != nullptr; }

MemoryUse ReadMemoryUse() { return {ResidentBytes(), AllocatedBytes()}; }

}  // namespace kestro::test
