#include "scenario/session.h"

namespace kestro::scenario {

Session::Session(Machine& machine_used, FrontEnd& front_end_used, Transcript& transcript_used)
    : machine(machine_used),
      front_end(front_end_used),
      transcript(transcript_used),
      exchange([this](std::function<void()> task) { front_end.Post(std::move(task)); }),
      notification_area(machine.Files(), machine.CodePage(), transcript),
      boxes([this](std::string_view text, int style,
                   ports::BoxAnswer planned) { return front_end.ShowBox(text, style, planned); },
            transcript, problems),
      file_dialogs(transcript),
      windows(front_end.Host(), transcript),
      log(transcript),
      dialling(transcript),
      database(machine.Database()),
      line_functions_(exchange, machine.CodePage(), transcript),
      recorded_settings_(settings, transcript),
      files_(machine.Files(), transcript),
      foreground_(front_end.Foreground(), windows, transcript),
      process_(transcript),
      shell_execute_(transcript),
      clipboard_(front_end.Clipboard(), transcript) {}

void Session::StartApplication(const PortsWrapper& wrap) {
  const app::Ports own{
      line_functions_,
      machine.CodePage(),
      recorded_settings_,
      files_,
      notification_area,
      shell,
      foreground_,
      boxes,
      file_dialogs,
      database,
      log,
      process_,
      instances,
      windows,
      dialling,
      shell_execute_,
      system_information,
      clipboard_,
      clock_,
  };
  application_ = std::make_unique<app::Application>(wrap ? wrap(own) : own);
  application_->Start();
}

void Session::SetSetting(std::string_view name, std::string_view value) {
  const auto separator = name.rfind('\\');
  std::string key(kSettingsKey);
  if (separator != std::string_view::npos) key.append(1, '\\').append(name.substr(0, separator));
  settings.CreateKey(key);
  settings.SetValue(key, name.substr(separator + 1), value);
}

std::string Session::Setting(std::string_view name) {
  return settings.QueryValue(kSettingsKey, name).value_or(std::string());
}

}  // namespace kestro::scenario
