#pragma once

#include <string>
#include <string_view>

#include "base/runtime_error.h"

namespace kestro::telephony {

/// What the line events need from the rest of the application. The calls come
/// on the user-interface thread, out of the line callback.
class LineEventReceiver {
 public:
  virtual ~LineEventReceiver() = default;

  virtual void OnIncommingCall() = 0;
  virtual void OnCallAccept() = 0;
  virtual void OnCallDisconnect() = 0;
  /// Name of an internal line, empty when it has none.
  [[nodiscard]] virtual std::string GetInternalCallerName(std::string_view caller_id) = 0;
  virtual void ShowBaloonToolTip(std::string_view title, std::string_view text) = 0;
  [[nodiscard]] virtual bool DoSupportTrayBaloon() = 0;
  virtual void ShowInternallCalDialog(std::string_view caller) = 0;
  /// An error that the line callback cannot pass on.
  virtual void ShutDownApplication(const base::RuntimeError& error) = 0;
};

/// The list of line names that the user chooses from (one entry a device, in
/// device order).
class LineList {
 public:
  virtual ~LineList() = default;
  virtual void ClearLines() = 0;
  virtual void AddLine(std::string_view name) = 0;
  virtual void SelectLine(std::int32_t index) = 0;
};

}  // namespace kestro::telephony
