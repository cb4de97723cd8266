#pragma once

#include <string>
#include <string_view>

namespace kestro::base {

/// Names a procedure in the log: module, ".", procedure, for example
/// "KESTROCTI.Functions" and "OnIncommingCall". Kept in two views so that
/// naming a procedure costs nothing while the log is off; both must outlive the
/// call (they are literals everywhere).
struct LogSource {
  std::string_view module;
  std::string_view procedure;

  [[nodiscard]] std::string Text() const {
    std::string text;
    text.reserve(module.size() + 1 + procedure.size());
    return text.append(module).append(1, '.').append(procedure);
  }
};

}  // namespace kestro::base
