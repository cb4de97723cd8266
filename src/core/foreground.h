#pragma once

#include "core/procedure_frame.h"
#include "ports/foreground_windows.h"

namespace kestro::core {

/// Brings windows to the foreground (module ForceFore).
class ForceFore {
 public:
  ForceFore(LogModule& log, ports::ForegroundWindows& windows)
      : procedure_(log, "KESTROCTI.ForceFore", Spelling::kFullStop),
        functions_(log, "KESTROCTI.Functions", Spelling::kFullStop),
        windows_(windows) {}

  /// True when the window is in the foreground afterwards. Raises nothing.
  bool ForceForegroundWindow(ports::WindowHandle window);
  /// Topmost or not topmost, position and size kept; result of the system call.
  std::int32_t StayOnTop(ports::WindowHandle window, bool on_top);

 private:
  [[nodiscard]] bool IsForeground(ports::WindowHandle window);
  void SetForegroundFromItsThread(ports::WindowHandle window);

  ProcedureFrame procedure_;
  ProcedureFrame functions_;
  ports::ForegroundWindows& windows_;
};

}  // namespace kestro::core
