#include "soak/memory_watch.h"

#include <algorithm>
#include <ostream>

namespace kestro::soak {
namespace {

constexpr std::size_t kPrintedSamples = 12;
constexpr std::size_t kKibibyte = 1024;

}  // namespace

void MemoryWatch::Sample(std::int64_t call) {
  if (call > kWarmUpCalls) samples_.push_back({call, test::ReadMemoryUse()});
}

std::int64_t MemoryWatch::Growth(std::size_t test::MemoryUse::*figure) const {
  if (!enough()) return 0;
  const auto less = [&](const SampleOfCall& left, const SampleOfCall& right) {
    return left.use.*figure < right.use.*figure;
  };
  const auto window = static_cast<std::ptrdiff_t>(kWindow);
  const auto most_at_first = std::max_element(samples_.begin(), samples_.begin() + window, less);
  const auto least_at_last = std::min_element(samples_.end() - window, samples_.end(), less);
  return static_cast<std::int64_t>(least_at_last->use.*figure) -
         static_cast<std::int64_t>(most_at_first->use.*figure);
}

std::int64_t MemoryWatch::AllocatedGrowth() const { return Growth(&test::MemoryUse::allocated); }

std::int64_t MemoryWatch::ResidentGrowth() const { return Growth(&test::MemoryUse::resident); }

void MemoryWatch::Print(std::ostream& out) const {
  const std::size_t step = std::max<std::size_t>(1, samples_.size() / kPrintedSamples);
  for (std::size_t i = 0; i < samples_.size(); i += step) {
    const auto& [call, use] = samples_[i];
    out << "  call " << call << ": resident " << use.resident / kKibibyte << " KiB, allocated "
        << use.allocated / kKibibyte << " KiB\n";
  }
}

}  // namespace kestro::soak
