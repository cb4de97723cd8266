#pragma once

#include <cstdint>
#include <string_view>

#include "base/log_source.h"

namespace kestro::ports {

/// The logging component: stores the method log. The five operations keep the
/// order of its published interface. All run on the user-interface thread and
/// are synchronous; a failure is raised as base::RuntimeError.
class LoggingComponent {
 public:
  virtual ~LoggingComponent() = default;

  /// First place of the interface; no caller uses it.
  virtual void Reserved() {}
  /// Switches the log file on or off; entries passed while it is off are
  /// accepted and not stored. Off until the first call.
  virtual void SetFileLogging(bool enabled) = 0;
  /// Directory (system path, "\" separators) in which the log file is kept.
  virtual void SetLogDirectory(std::string_view directory) = 0;
  virtual void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) = 0;
  /// Called twice by every procedure: costs nothing to speak of while file logging is off.
  virtual void LineEntry(const base::LogSource& source, std::string_view message) = 0;
};

}  // namespace kestro::ports
