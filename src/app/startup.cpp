#include "app/startup.h"

#include "base/scope_value.h"
#include "ports/file_system.h"

namespace kestro::app {

using core::Functions::StartFault;

Startup::Startup(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.Functions", core::Spelling::kFullStop), needs_(needs) {
  needs_.main_form.on_load = [this] { FindDatabase(); };
  needs_.tray.on_loading = [this] { needs_.log.SetLogDirectory(needs_.files.ProgramFolder()); };
  needs_.tray.on_load = [this] { ApplicationInitialize(); };
  // A start that stops half-way would leave a program without an icon and without a window.
  const auto end = [this](const base::RuntimeError& error) { needs_.ending.ShutDownApplication(error); };
  needs_.main_form.on_load_failed = end;
  needs_.tray.on_load_failed = end;
}

/// Part of the main window's load handler, before the window shows.
void Startup::FindDatabase() {
  needs_.settings.Load();
  const std::string path = needs_.location.CopyDatabaseTemplate(needs_.location.ConfiguredDatabaseFolder());
  needs_.settings.DBPathTextBox.SetText(path);
  needs_.flags.DatabaseAccessible = needs_.contacts.CheckAccessIntoContactDatabase(path);
  needs_.tray.Load();
}

void Startup::ApplicationInitialize() {
  procedure_("ApplicationInitialize", [&] {
    help_file_ = GetApplicationHelpFilePath();
    needs_.flags.ShuttingDown = false;
    needs_.flags.SettingsShownAtStartup = false;
    if (!needs_.location.FirstStartIsDone()) needs_.location.DoFirstStartActions();
    needs_.settings_loading.InitializeSettings();
    InitializeLine();
    needs_.icon.InitializeTrayIcon();
    if (!needs_.area.Available()) ShowMainWindowWithoutTray();
    StartMonitoring();
  });
}

/// Without line functions the application stays of use for its contacts.
void Startup::InitializeLine() {
  // Logged on its way, and the user has been told: no line is chosen then.
  base::IgnoringErrors([this] { needs_.line.InitializeLine(); });
}

void Startup::ShowMainWindowWithoutTray() {
  needs_.main_form.StayReachable();
  needs_.main_form.Show();
  needs_.messages.Notice("300");
}

void Startup::StartMonitoring() {
  StartFault fault = StartFault::kNone;
  std::string message;
  needs_.lifecycle.StartApplication(fault, message);
  if (fault == StartFault::kNone) return;
  const base::ScopeValue shown(needs_.flags.SettingsShownAtStartup, true);
  needs_.settings_events.ShowModal(nullptr, fault, message);
}

std::string Startup::GetApplicationHelpFilePath() {
  return procedure_("GetApplicationHelpFilePath", [&] {
    return ports::BuildPath(needs_.shared.GetCurrentApplicationPath(), "KESTROCTI.chm");
  });
}

}  // namespace kestro::app
