#pragma once

#include "base/runtime_error.h"
#include "ports/process_control.h"

namespace kestro::adapters {

class Win32ProcessControl final : public ports::ProcessControl {
 public:
  [[noreturn]] void EndProcess() override { throw base::ProcessEnded{}; }
};

}  // namespace kestro::adapters
