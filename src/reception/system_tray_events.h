#pragma once

#include "contacts/contact_integration_module.h"
#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/lifecycle.h"
#include "core/procedure_frame.h"
#include "core/shell_version.h"
#include "management/about_form.h"
#include "management/main_form.h"
#include "management/settings_events.h"
#include "reception/call_events.h"
#include "reception/call_transfer.h"
#include "reception/call_windows.h"
#include "reception/internal_lines.h"
#include "reception/system_tray_form.h"
#include "reception/tray_icon.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::reception {

/// What the notification icon, its menu and the call buttons do. Every handler
/// logs an error and returns.
class SystemTrayEvents {
 public:
  struct Needs {
    core::LogModule& log;
    core::ApplicationFlags& flags;
    core::Functions::ShellVersion& shell;
    core::Functions::ApplicationEnding& ending;
    contacts::ContactIntegrationModule& contacts;
    telephony::TAPIFunctionsModule& line;
    core::Functions::Lifecycle& lifecycle;
    management::frmMainForm& main_form;
    management::SettingsEvents& settings;
    management::frmAbout& about;
    SystemTrayForm& tray;
    Functions::InternalLines& lines;
    Functions::CallTransfer& transfer;
    Functions::TrayIcon& icon;
    Functions::CallWindows& windows;
    Functions::CallEvents& events;
  };
  /// Plugs the handlers into the tray window's controls.
  explicit SystemTrayEvents(const Needs& needs);

  /// The icon's events: `x` carries the code (the window's coordinates are pixels).
  void Form_MouseMove(int button, int shift, int x, int y);

 private:
  void OpenWhatMatters();
  void OpenInternalCall();
  void mnuRedirectList_Click(int index);
  void StartOrAskForSettings();
  [[nodiscard]] bool SettingsAreOpen();
  void mPopStartStop_Click();
  void mPopSettings_Click();
  void mnuContactsList_Click();
  void mAboutForm_Click();
  void mPopExit_Click();
  void btnIncomingCall_Click();
  void btnAcceptCall_Click();
  void btnDisconnectCall_Click();
  void btnTransferCall_Click();

  core::ProcedureFrame procedure_;
  Needs needs_;
};

}  // namespace kestro::reception
