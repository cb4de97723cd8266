#pragma once

#include <windows.h>

#include <memory>

namespace kestro::adapters {

struct SystemHandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};

/// Owns a handle of the system; empty = none (INVALID_HANDLE_VALUE never gets in).
using Handle = std::unique_ptr<void, SystemHandleCloser>;

[[nodiscard]] inline Handle OwnHandle(HANDLE handle) {
  return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace kestro::adapters
