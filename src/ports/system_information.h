#pragma once

#include <string>

namespace kestro::ports {

/// Names and versions of what the program runs on; an empty one is not known.
struct SystemInformation {
  std::string toolkit;          // of the windows
  std::string database_engine;  // behind the contacts database
  std::string system;           // operating system
  std::string desktop;

  friend bool operator==(const SystemInformation&, const SystemInformation&) = default;
  [[nodiscard]] bool empty() const { return *this == SystemInformation(); }
};

class SystemInformationTool {
 public:
  virtual ~SystemInformationTool() = default;
  /// Starts the system's own tool; false when it has none or none that starts.
  virtual bool StartTool() = 0;
  /// What this program can find out by itself; empty when that is nothing. Raises nothing.
  [[nodiscard]] virtual SystemInformation Read() = 0;
};

}  // namespace kestro::ports
