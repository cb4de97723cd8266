#pragma once

#include <string>

#include "contacts/contact_integration_module.h"
#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/database_location.h"
#include "core/lifecycle.h"
#include "core/procedure_frame.h"
#include "management/initialize_settings.h"
#include "management/main_form.h"
#include "management/settings_events.h"
#include "ports/file_system.h"
#include "ports/notification_area.h"
#include "reception/system_tray_form.h"
#include "reception/tray_icon.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::app {

/// How the application comes up: the main window's load handler finds the
/// database, the tray window's load handler does the rest.
class Startup {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::SharedFunctions& shared;
    core::ApplicationFlags& flags;
    core::Functions::DatabaseLocation& location;
    core::Functions::ApplicationEnding& ending;
    core::Functions::Lifecycle& lifecycle;
    contacts::ContactIntegrationModule& contacts;
    telephony::TAPIFunctionsModule& line;
    management::Functions::SettingsLoading& settings_loading;
    management::Settings& settings;
    management::SettingsEvents& settings_events;
    management::frmMainForm& main_form;
    reception::SystemTrayForm& tray;
    reception::Functions::TrayIcon& icon;
    ports::NotificationArea& area;
    ports::FileSystem& files;
  };
  /// Plugs itself into the two load handlers.
  explicit Startup(const Needs& needs);

  /// Path of the help file; empty before ApplicationInitialize.
  [[nodiscard]] const std::string& help_file() const { return help_file_; }

 private:
  void FindDatabase();
  void ApplicationInitialize();
  void InitializeLine();
  void StartMonitoring();
  void ShowMainWindowWithoutTray();
  [[nodiscard]] std::string GetApplicationHelpFilePath();

  core::ProcedureFrame procedure_;
  Needs needs_;
  std::string help_file_;
};

}  // namespace kestro::app
