#pragma once

#include <cstdint>

#include "core/procedure_frame.h"
#include "ports/shell_information.h"

namespace kestro::core::Functions {

/// The parts of the operating system's version word.
struct WindowsVersion {
  int major = 0;
  int minor = 0;
  int third = 0;
  int fourth = 0;
  bool is_nt = false;
};

/// What the shell and the system at hand can do.
class ShellVersion {
 public:
  ShellVersion(LogModule& log, ports::ShellInformation& shell)
      : procedure_(log, "KESTROCTI.Functions", Spelling::kFullStop), shell_(shell) {}

  /// The shell library's file version has at least that major number; false when it cannot be read.
  [[nodiscard]] bool IsShell32VersionAtLeast(std::int16_t major);
  /// Size of the notification record that the shell takes: 504, 488 or 88. Whether
  /// balloons are supported plays no part in it.
  [[nodiscard]] std::int32_t NFStructureSize(bool balloon_support);
  void GetWindowsVersion(WindowsVersion& version);
  /// The system can show balloon tooltips. Raises nothing: an error counts as no.
  [[nodiscard]] bool DoSupportTrayBaloon();

 private:
  ProcedureFrame procedure_;
  ports::ShellInformation& shell_;
};

}  // namespace kestro::core::Functions
