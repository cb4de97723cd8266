#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestro::ports {

/// Opens files and addresses with the program that the desktop has for them.
class ShellExecute {
 public:
  virtual ~ShellExecute() = default;
  /// Verb "open" on a file (system path) or an address. False when nothing could be started.
  virtual bool Open(std::string_view target) = 0;
};

/// What the about window tells about the system: names and versions, in order.
using SystemInformation = std::vector<std::pair<std::string, std::string>>;

class SystemInformationTool {
 public:
  virtual ~SystemInformationTool() = default;
  /// Empty when nothing can be found out, or when the system's own tool was started instead.
  [[nodiscard]] virtual SystemInformation Read() = 0;
  /// Starts the system's own tool; false when there is none.
  virtual bool StartTool() = 0;
};

}  // namespace kestro::ports
