#pragma once

#include <cstdint>
#include <string_view>

namespace kestro::telephony {

/// Names of the line functions' message numbers, call states and line-device
/// states as the log writes them; empty for a value without a name.
[[nodiscard]] std::string_view LineMessageName(std::int32_t message);
[[nodiscard]] std::string_view CallStateName(std::uint32_t state);
[[nodiscard]] std::string_view LineDeviceStateName(std::uint32_t state);

/// Call states that carry an action.
namespace CallStateValue {
inline constexpr std::uint32_t kIdle = 0x00000001;
inline constexpr std::uint32_t kOffering = 0x00000002;
inline constexpr std::uint32_t kConnected = 0x00000100;
inline constexpr std::uint32_t kDisconnected = 0x00004000;
}  // namespace CallStateValue

}  // namespace kestro::telephony
