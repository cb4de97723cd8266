#pragma once

#include <functional>
#include <string>

#include "contacts/contact_integration_module.h"
#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/foreground.h"
#include "core/lifecycle.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "core/registry_settings_module.h"
#include "management/initialize_settings.h"
#include "management/settings.h"
#include "ports/message_boxes.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::management {

/// What the settings window does. Every handler logs an error and returns.
class SettingsEvents {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::RegistrySettingsModule& registry;
    core::Functions::ApplicationEnding& ending;
    core::ForceFore& foreground;
    Functions::SettingsLoading& loading;
    contacts::ContactIntegrationModule& contacts;
    telephony::TAPIFunctionsModule& line;
    ports::FileDialogs& files;
    Settings& settings;
  };
  /// Plugs the handlers into the window.
  explicit SettingsEvents(const Needs& needs);

  /// Shows the window modally until the user has confirmed or cancelled. A fault
  /// puts the focus on the field concerned, with its message in front.
  void ShowModal(forms::Form* owner, core::Functions::StartFault fault = core::Functions::StartFault::kNone,
                 const std::string& message = {});

  [[nodiscard]] bool open() const { return needs_.settings.modal(); }
  void BringForward() { needs_.foreground.ForceForegroundWindow(needs_.settings.handle()); }

  /// The contact list is to be read again from the database just chosen.
  forms::Handler refresh_main_window;

 private:
  void BeforeShowForm();
  void Form_Activate();
  void Form_QueryUnload(bool& cancel, int unload_mode);
  void ChoosePathToDB_Click();
  void OKButton_Click();
  void CancelButton_Click();
  [[nodiscard]] bool Refuses(const std::string& path);
  void Save(const std::string& path);
  void SaveLine();

  core::ProcedureFrame procedure_;
  core::LogModule& log_;
  Needs needs_;
  std::string alert_message_;
  bool show_message_and_preset_field_ = false;
  core::Functions::StartFault field_code_ = core::Functions::StartFault::kNone;
  bool refused_path_ = false;  // the database field is at fault: the focus goes there
  int kept_line_index_ = -1;
};

}  // namespace kestro::management
