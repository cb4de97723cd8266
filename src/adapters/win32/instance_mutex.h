#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/win32/file_handle.h"
#include "adapters/win32/hidden_window.h"
#include "ports/instance_guard.h"

namespace kestro::adapters {

/// One program a session of a user: a named mutex. The system takes it back
/// when the process ends, however it ends.
class InstanceMutex final : public ports::InstanceGuard {
 public:
  /// Class of the hidden window that the running program listens at.
  static constexpr const wchar_t* kWindowClass = L"KESTRO CTI";

  [[nodiscard]] bool AnotherInstanceRuns() override;
  /// Sends ActivationMessage to the running program's window and lets it take the foreground.
  void BringOtherToFront() override;

 private:
  Handle mutex_;  // held
};

/// What a program that was started a second time asks of the running one. Both
/// sides are of the same user and session; whatever else arrives is dropped.
///
/// Hands the number of a link (nothing in it = a link without a number) to the running program and lets it
/// take the foreground. False when none runs or it does not answer within seconds.
[[nodiscard]] bool AskRunningProgramToDial(std::string_view link_number);

/// Listens at the window. The handlers run while the other program waits: they must not.
void ListenToSecondStarts(HiddenWindow& window, std::function<void()> on_activate,
                          std::function<void(std::string link_number)> on_dial);

}  // namespace kestro::adapters
