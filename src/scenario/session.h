#pragma once

#include <functional>
#include <memory>

#include "app/application.h"
#include "exchange/exchange.h"
#include "ports/memory_settings_store.h"
#include "scenario/faulty_database.h"
#include "scenario/machine.h"
#include "scenario/problems.h"
#include "scenario/recording_dialling.h"
#include "scenario/recording_file_dialogs.h"
#include "scenario/recording_form_host.h"
#include "scenario/recording_line_functions.h"
#include "scenario/recording_message_boxes.h"
#include "scenario/recording_notification_area.h"
#include "scenario/recording_shell.h"
#include "scenario/recording_stores.h"
#include "scenario/scripted_instances.h"
#include "scenario/scripted_shell_information.h"
#include "scenario/stopped_clock.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Key of the settings store under which the application keeps its settings.
inline constexpr std::string_view kSettingsKey = "Software\\Kestro\\CTI";

/// One complete application on the player's ports, for one scenario. What is
/// given must outlive it.
class Session {
 public:
  Session(Machine& machine_used, FrontEnd& front_end_used, Transcript& transcript_used);

  Machine& machine;
  FrontEnd& front_end;
  Transcript& transcript;
  Problems problems;
  exchange::Exchange exchange;
  ports::MemorySettingsStore settings;
  ScriptedShellInformation shell;
  ScriptedInstances instances;
  RecordingNotificationArea notification_area;
  RecordingMessageBoxes boxes;
  RecordingFileDialogs file_dialogs;
  RecordingFormHost windows;
  RecordingLog log;
  RecordingDialling dialling;
  FaultyDatabase database;
  ScriptedSystemInformation system_information;

  /// Puts other ports in front of the session's own, or in their place. They must outlive the session.
  using PortsWrapper = std::function<app::Ports(const app::Ports& own)>;

  /// Makes and starts the application. base::ProcessEnded comes through.
  void StartApplication(const PortsWrapper& wrap = {});
  /// nullptr before the start.
  [[nodiscard]] app::Application* application() const { return application_.get(); }

  /// Stores a setting without a line in the transcript.
  void SetSetting(std::string_view name, std::string_view value);
  [[nodiscard]] std::string Setting(std::string_view name);

 private:
  RecordingLineFunctions line_functions_;
  RecordingSettingsStore recorded_settings_;
  RecordingFileSystem files_;
  RecordingForegroundWindows foreground_;
  RecordingProcessControl process_;
  RecordingShellExecute shell_execute_;
  RecordingClipboard clipboard_;
  StoppedClock clock_;
  std::unique_ptr<app::Application> application_;  // last: it uses all of the above until its end
};

}  // namespace kestro::scenario
