#include "soak/memory_watch.h"

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's own name; null without it
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace kestro::soak {
namespace {

/// Calls before the first sample: until then every list, cache and window has been used once.
constexpr std::int64_t kWarmUpCalls = 10'000;
/// Bytes. Not nothing: the database keeps prepared statements, up to 64 a file, and some searches come late.
constexpr std::int64_t kMostAllocatedGrowth = 512LL * 1024;
constexpr std::int64_t kMostResidentGrowth = 2LL * 1024 * 1024;  // the allocator gives back in pieces
constexpr std::size_t kPrintedSamples = 12;

bool HasAddressSanitizer() { return __sanitizer_get_current_allocated_bytes != nullptr; }

MemoryUse ReadMemoryUse() {
  std::ifstream in("/proc/self/statm");
  std::int64_t total_pages = 0;
  std::int64_t resident_pages = 0;
  in >> total_pages >> resident_pages;
  const struct mallinfo2 info = ::mallinfo2();
  // The sanitizer has an allocator of its own.
  const std::size_t allocated =
      HasAddressSanitizer() ? __sanitizer_get_current_allocated_bytes() : info.uordblks + info.hblkhd;
  return {resident_pages * ::sysconf(_SC_PAGESIZE), static_cast<std::int64_t>(allocated)};
}

}  // namespace

void MemoryWatch::Sample(std::int64_t call) {
  if (call > kWarmUpCalls) samples_.push_back({call, ReadMemoryUse()});
}

bool MemoryWatch::Grows() const {
  return Growth(&MemoryUse::allocated) > kMostAllocatedGrowth ||
         (!HasAddressSanitizer() && Growth(&MemoryUse::resident) > kMostResidentGrowth);
}

std::int64_t MemoryWatch::Growth(std::int64_t MemoryUse::*figure) const {
  if (!enough()) return 0;
  const auto value = [figure](const SampleOfCall& sample) { return sample.use.*figure; };
  const auto most = std::ranges::max_element(samples_.begin(), samples_.begin() + kWindow, {}, value);
  const auto least = std::ranges::min_element(samples_.end() - kWindow, samples_.end(), {}, value);
  return value(*least) - value(*most);
}

void MemoryWatch::Print(std::ostream& out) const {
  if (!enough()) return;
  const std::size_t step = std::max<std::size_t>(1, samples_.size() / kPrintedSamples);
  for (std::size_t i = 0; i < samples_.size(); i += step) {
    const auto& [call, use] = samples_[i];
    out << "  call " << call << ": resident " << use.resident / 1024 << " KiB, allocated "
        << use.allocated / 1024 << " KiB\n";
  }
  out << of_ << ", after its first " << kWarmUpCalls << " calls: allocated " << Growth(&MemoryUse::allocated)
      << " bytes more, resident " << Growth(&MemoryUse::resident) << "\n";
}

}  // namespace kestro::soak
