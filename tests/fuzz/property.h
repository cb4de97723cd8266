#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro::fuzz {

/// What a fuzz program does with one input. What it throws is a failure.
void Check(std::string_view);

/// What must hold for every input.
inline void Require(bool holds, const char* what) {
  if (!holds) throw std::logic_error(what);
}

/// Cuts off the first byte, which chooses something; 0 when there is none.
inline std::uint8_t TakeByte(std::string_view& input) {
  if (input.empty()) return 0;
  const char byte = input.front();
  input.remove_prefix(1);
  return static_cast<std::uint8_t>(byte);
}

}  // namespace kestro::fuzz
