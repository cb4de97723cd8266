#pragma once

#include <memory>

#include "core/procedure_frame.h"
#include "ports/database.h"

namespace kestro::contacts::Functions {

/// Closes a recordset and its connection and clears the reference. Errors on the
/// way are ignored: afterwards there is nothing left to lose.
class RecordsetClosing {
 public:
  explicit RecordsetClosing(core::LogModule& log)
      : procedure_(log, "KESTROCTI.Functions", core::Spelling::kBare) {}

  void CloseRecordset(std::unique_ptr<ports::Recordset>& recordset) const;

 private:
  core::ProcedureFrame procedure_;
};

}  // namespace kestro::contacts::Functions
