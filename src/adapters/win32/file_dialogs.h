#pragma once

#include <windows.h>

#include <commdlg.h>

#include "adapters/win32/front_end/win32_event_boundary.h"
#include "ports/message_boxes.h"

namespace kestro::adapters {

/// The common open-file dialog, in front of the window that the user works with.
class Win32FileDialogs final : public ports::FileDialogs {
 public:
  /// Throws base::ProcessEnded when the process ends while the dialog is open.
  explicit Win32FileDialogs(Win32EventBoundary& boundary) : boundary_(boundary) {}

  std::optional<std::string> OpenFile(const ports::FileDialogRequest& request) override;

 private:
  bool Ask(OPENFILENAMEW& dialog);

  Win32EventBoundary& boundary_;
};

}  // namespace kestro::adapters
