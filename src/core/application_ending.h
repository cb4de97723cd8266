#pragma once

#include <string>
#include <vector>

#include "core/application_flags.h"
#include "core/line_monitor.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "ports/process_control.h"

namespace kestro::core::Functions {

/// How the application ends. The ending itself runs once, whoever asks for it.
class ApplicationEnding {
 public:
  ApplicationEnding(LogModule& log, Messages& messages, LineMonitor& line, forms::FormHost& windows,
                    ports::ProcessControl& process, ApplicationFlags& flags);

  /// The windows that the ending unloads, in that order.
  void SetForms(std::vector<forms::Form*> forms) { forms_ = std::move(forms); }

  void OnApplicationEnd();
  /// A window is being closed by the application or the system, not by the user.
  [[nodiscard]] bool IsApplicationShutdown(int unload_mode);
  /// Ends the application: closes the line, unloads every window, ends the
  /// process (base::ProcessEnded). Only logs when the ending is under way.
  void IsApplicationShutdown();
  /// After an error that cannot be survived: message 106, then the ending.
  void ShutDownApplication(const base::RuntimeError& error);

 private:
  ProcedureFrame procedure_;
  Messages& messages_;
  LineMonitor& line_;
  forms::FormHost& windows_;
  ports::ProcessControl& process_;
  ApplicationFlags& flags_;
  std::vector<forms::Form*> forms_;
};

}  // namespace kestro::core::Functions
