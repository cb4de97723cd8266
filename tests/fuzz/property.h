#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace kestro::fuzz {

/// What must hold for every input: the driver reports what is thrown.
inline void Require(bool holds, const char* what) {
  if (!holds) throw std::logic_error(what);
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace kestro::fuzz
