#pragma once

#include <cstdint>
#include <string_view>

#include "base/log_source.h"
#include "ports/logging_component.h"

namespace kestro::core {

/// Passes the method log on to the logging component. Neither formats nor
/// stores anything; the component's failures go up to the caller.
class LogModule {
 public:
  explicit LogModule(ports::LoggingComponent& component) : component_(component) {}

  void LogMessage(const base::LogSource& source, std::string_view message) {
    component_.LineEntry(source, message);
  }
  void LogError(std::int32_t number, std::string_view source, std::string_view description) {
    component_.ErrorEntry(number, source, description);
  }
  /// Hook for extra diagnostic texts (message names, formatted errors); it throws them away.
  void TraceMessage(std::string_view /*source*/, std::string_view /*message*/) {}
  void TraceMessage(const base::LogSource& /*source*/, std::string_view /*message*/) {}
  void SetFileLogging(bool enabled) { component_.SetFileLogging(enabled); }
  void SetLogDirectory(std::string_view path) { component_.SetLogDirectory(path); }

 private:
  ports::LoggingComponent& component_;
};

}  // namespace kestro::core
