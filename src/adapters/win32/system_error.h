#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/runtime_error.h"

namespace kestro::adapters {

/// The system's own words for an error of it, without a line end.
[[nodiscard]] std::string SystemErrorText(std::uint32_t error);

/// Raises base::RuntimeError for a system error code: 58 for something that
/// exists already, 76 for a missing folder on the way, 75 for a refusal and for
/// everything else (then with the system's own words). What is missing itself
/// gets the given number: 53 for a file, 76 for a folder.
[[noreturn]] void RaiseSystemError(std::uint32_t error, std::int32_t number_when_missing);

}  // namespace kestro::adapters
