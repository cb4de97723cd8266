#pragma once

#include <string_view>

namespace kestro::ports {

/// Opens files and addresses with the program that the desktop has for them.
class ShellExecute {
 public:
  virtual ~ShellExecute() = default;
  /// Verb "open" on a file (system path) or an address (http, https, mailto).
  /// False when it is neither or nothing could be started; raises nothing.
  virtual bool Open(std::string_view target) = 0;
};

}  // namespace kestro::ports
