#pragma once

#include <string>
#include <string_view>

#include "core/procedure_frame.h"
#include "reception/system_tray_form.h"

namespace kestro::reception::Functions {

/// Recognises internal lines by the entries of the transfer menu, whose
/// captions read "21 - Reception".
class InternalLines {
 public:
  InternalLines(core::LogModule& log, const SystemTrayForm& tray)
      : procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop), tray_(tray) {}

  /// Number of a caption: what stands before its first blank; empty when there
  /// is none or it comes first.
  [[nodiscard]] std::string GetInternalListCallerId(std::string_view caption) const;
  /// Name of a caption: what stands behind its first "-"; empty when there is
  /// none or it comes first.
  [[nodiscard]] std::string GetInternalListCallerName(std::string_view caption) const;
  /// Name of the line with exactly that number; the last of several wins. Empty when there is none.
  [[nodiscard]] std::string GetInternalCallerName(std::string_view caller_id) const;

 private:
  core::ProcedureFrame procedure_;
  const SystemTrayForm& tray_;
};

}  // namespace kestro::reception::Functions
