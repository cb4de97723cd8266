#pragma once

#include <cstdint>

#include "base/runtime_error.h"

namespace kestro::test {

/// Number of the run-time error that the action raises; 0 when it raises none.
template <class Action>
std::int32_t ErrorNumberOf(Action&& action) {
  try {
    action();
  } catch (const base::RuntimeError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace kestro::test
