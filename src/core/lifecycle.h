#pragma once

#include <string>

#include "core/application_flags.h"
#include "core/contact_database_access.h"
#include "core/line_monitor.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "ports/instance_guard.h"

namespace kestro::core::Functions {

/// Which setting is at fault when a start check fails.
enum class StartFault : int { kNone = 0, kDatabasePath = 1, kTelephoneLine = 2 };

/// What the lifecycle needs of the windows above it; named as the procedures it runs.
class LifecycleDisplay {
 public:
  virtual ~LifecycleDisplay() = default;
  virtual void SetTrayIconMenuForStartedApplication() = 0;
  virtual void SetMainFormMenuForStartedApplication() = 0;
  virtual void SetTrayFormForStartedApplication() = 0;
  virtual void SetTrayIconMenuForStoppedApplication() = 0;
  virtual void SetMainFormMenuForStoppedApplication() = 0;
  virtual void SetTrayFormForStoppedApplication() = 0;
  virtual void ChangeTrayIconToIdle() = 0;
  virtual void ChangeTrayIconToStoppedApplication() = 0;
  virtual void DeleteTrayBaloonTooltip() = 0;
  virtual void PopulateTransferSubmenuData() = 0;
  /// The main window's exit command.
  virtual void mnuExit_Click() = 0;
};

/// Decides whether call monitoring may run, starts it and stops it.
class Lifecycle {
 public:
  struct Needs {
    LogModule& log;
    Messages& messages;
    Localization& texts;
    ApplicationFlags& flags;
    LineMonitor& line;
    ContactDatabaseAccess& database;
    ports::InstanceGuard& instances;
    LifecycleDisplay& display;
  };
  explicit Lifecycle(const Needs& needs)
      : procedure_(needs.log, "KESTROCTI.Functions", Spelling::kFullStop), needs_(needs) {}

  /// The start checks. A fault that the settings window can mend comes back with
  /// its message; the others have shown theirs.
  [[nodiscard]] bool CanApplicationStart(StartFault& reason, std::string& message);
  void StartApplication(StartFault& reason, std::string& message);
  void StopApplication();
  /// Opens the chosen line; false when none is chosen or it cannot be opened.
  [[nodiscard]] bool OnApplicationStart();
  void OnApplicationStop();

 private:
  [[nodiscard]] bool IsSecondInstance();
  [[nodiscard]] bool DatabaseIsUsable(StartFault& reason, std::string& message);
  void ShowStarted();
  void ShowStopped();
  void ShowStoppedIcon();

  ProcedureFrame procedure_;
  Needs needs_;
};

}  // namespace kestro::core::Functions
