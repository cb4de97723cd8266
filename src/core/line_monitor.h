#pragma once

#include <cstdint>

namespace kestro::core {

/// What the lifecycle needs of the telephony module. Errors are raised as
/// base::RuntimeError.
class LineMonitor {
 public:
  virtual ~LineMonitor() = default;
  virtual void InitializeLine() = 0;
  virtual void StartLineListening(std::int32_t device) = 0;
  virtual void StopLineListening() = 0;
  /// Releases a call in progress and stops listening; nothing while not listening.
  virtual void ShutDownLine() = 0;
  /// `keep_call`: only the application's handle is released, the call goes on.
  virtual void DropCall(bool keep_call) = 0;
  [[nodiscard]] virtual bool IsLineIdSet() = 0;
  [[nodiscard]] virtual std::int32_t GetCurrentLineId() = 0;
};

}  // namespace kestro::core
