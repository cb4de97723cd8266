#pragma once

#include <cstdint>
#include <string_view>

#include "base/runtime_error.h"

namespace kestro::adapters {

/// Raises base::RuntimeError for a value of errno: 58 for something that exists
/// already, 76 for a path through something that is no folder, 75 for a refusal
/// and for everything else (then with the system's own words). What is missing
/// gets the given number: 53 for a file, 76 for a folder.
[[noreturn]] void RaiseSystemError(int error, std::int32_t number_when_missing);

}  // namespace kestro::adapters
