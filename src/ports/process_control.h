#pragma once

namespace kestro::ports {

/// The running process.
class ProcessControl {
 public:
  virtual ~ProcessControl() = default;
  /// Ends the process at once: throws base::ProcessEnded, which the front end's
  /// event boundary turns into leaving its event loop.
  [[noreturn]] virtual void EndProcess() = 0;
};

}  // namespace kestro::ports
