#pragma once

#include "core/application_flags.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "core/shell_version.h"
#include "management/settings.h"
#include "reception/call_windows.h"
#include "reception/internal_lines.h"
#include "reception/system_tray_form.h"
#include "reception/transfer_menu.h"
#include "reception/tray_icon.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::reception::Functions {

/// Turns the line's events into what the user sees. Raises: an error that
/// reaches the line callback ends the application.
class CallEvents {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::Functions::ShellVersion& shell;
    management::Settings& settings;
    telephony::TAPIFunctionsModule& line;
    SystemTrayForm& tray;
    InternalLines& lines;
    TrayIcon& icon;
    TransferMenu& menu;
    CallWindows& windows;
    ContactDetail& detail;
    UnknownContact& unknown;
  };
  explicit CallEvents(const Needs& needs)
      : procedure_(needs.log, "KESTROCTI.Functions", core::Spelling::kFullStop), needs_(needs) {}

  void OnIncommingCall();
  void OnCallAccept();
  void OnCallDisconnect();

 private:
  void SetCallButtons(bool incoming, bool accept, bool disconnect, bool transfer);
  void AnnounceExternalCall();
  void AnnounceUnknownCaller();
  void AnnounceKnownCaller();
  void AnnounceInternalCall();
  [[nodiscard]] bool DisplaysByItself() const;

  core::ProcedureFrame procedure_;
  Needs needs_;
};

}  // namespace kestro::reception::Functions
