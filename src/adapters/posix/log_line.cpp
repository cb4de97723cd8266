#include "adapters/posix/log_line.h"

#include <array>
#include <ctime>

namespace kestro::adapters {

std::string LogTime(std::chrono::system_clock::time_point time) {
  using std::chrono::milliseconds;
  const auto since_epoch = std::chrono::floor<milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(since_epoch);
  const auto whole = static_cast<std::time_t>(seconds.count());
  std::tm local{};
  ::localtime_r(&whole, &local);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S.", &local);
  const std::string fraction = std::to_string((since_epoch - seconds).count());
  return std::string(text.data(), length).append(3 - fraction.size(), '0').append(fraction);
}

}  // namespace kestro::adapters
