#pragma once

#include <string>

#include "core/procedure_frame.h"
#include "core/shared_functions.h"
#include "ports/shell_execute.h"

namespace kestro::core {

/// The help pages that lie beside the program.
class HelpPages {
 public:
  /// All of them must outlive it.
  HelpPages(LogModule& log, SharedFunctions& shared, ports::ShellExecute& shell)
      : procedure_(log, "KESTROCTI.HelpPages", Spelling::kFullStop), shared_(shared), shell_(shell) {}

  /// Path of the page that leads to all others.
  [[nodiscard]] std::string GetStartPagePath() const;
  /// Shows that page in the user's browser. Raises 53 when it cannot be opened.
  void Open();

 private:
  ProcedureFrame procedure_;
  SharedFunctions& shared_;
  ports::ShellExecute& shell_;
};

}  // namespace kestro::core
