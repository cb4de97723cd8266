#pragma once

#include <cstdint>

#include "core/procedure_frame.h"

namespace kestro::telephony {

/// Names failing results of the line functions in the log. Shows nothing and
/// changes no state.
class TAPIError {
 public:
  explicit TAPIError(core::LogModule& log)
      : procedure_(log, "KESTROCTI.TAPIError", core::Spelling::kFullStop) {}

  /// Logs "TAPI Error = " and the name of the result, or its signed decimal
  /// number when it has no name.
  void ProcessTAPIError(std::int32_t error_code) const;

 private:
  core::ProcedureFrame procedure_;
};

}  // namespace kestro::telephony
