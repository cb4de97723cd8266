#include "core/lifecycle.h"

#include "base/text.h"

namespace kestro::core::Functions {
namespace {

constexpr std::string_view kCanStart = "CanApplicationStart";

}  // namespace

bool Lifecycle::CanApplicationStart(StartFault& reason, std::string& message) {
  return procedure_(kCanStart, [&] {
    needs_.flags.DatabaseAccessible = false;
    if (IsSecondInstance() || !DatabaseIsUsable(reason, message)) return false;
    needs_.flags.DatabaseAccessible = true;
    if (!needs_.line.IsLineIdSet()) {
      procedure_.Log(kCanStart, "The phone line must be selected before the application can be started.");
      message = needs_.texts.GetLocalizedString("114", {std::string(kLineBreak)});
      reason = StartFault::kTelephoneLine;
      return true;  // the database is usable; the caller opens the settings at the line
    }
    // Asked again on purpose: the attribute may have changed meanwhile.
    if (needs_.database.IsDatabaseReadOnly(needs_.database.DatabasePath())) {
      procedure_.Log(kCanStart, "Database is readonly.");
      needs_.messages.Notice("113", {std::string(kLineBreak)});
    }
    return true;
  });
}

bool Lifecycle::IsSecondInstance() {
  if (!needs_.instances.AnotherInstanceRuns()) return false;
  procedure_.Log(kCanStart, "Application is already running.");
  needs_.messages.Notice("107", {std::string(kLineBreak)});
  procedure_.Log(kCanStart, "Shutdowning the application.");
  needs_.instances.BringOtherToFront();
  needs_.display.mnuExit_Click();
  return true;
}

bool Lifecycle::DatabaseIsUsable(StartFault& reason, std::string& message) {
  const std::string path = needs_.database.DatabasePath();
  if (base::Trim(path).empty()) {
    procedure_.Log(kCanStart, "Path to database must be filled before the application can be started.");
    message = needs_.texts.GetLocalizedString("108");
    reason = StartFault::kDatabasePath;
    return false;
  }
  if (!needs_.database.CheckAccessIntoContactDatabase(path)) {
    procedure_.Log(kCanStart, "Unable to contact CONTACT database.");
    message = needs_.texts.GetLocalizedString("110");
    reason = StartFault::kDatabasePath;
    return false;
  }
  if (needs_.database.IsDatabaseReadOnly(path)) {
    procedure_.Log(kCanStart, "Database is READONLY.");
    const std::string line_break(kLineBreak);
    needs_.messages.Notice("109", {path, line_break, line_break});
    return false;
  }
  return true;
}

void Lifecycle::StartApplication(StartFault& reason, std::string& message) {
  procedure_("StartApplication", [&] {
    reason = StartFault::kNone;
    if (CanApplicationStart(reason, message)) needs_.flags.ApplicationStarted = OnApplicationStart();
    if (needs_.flags.ApplicationStarted) {
      ShowStarted();
    } else {
      ShowStopped();
    }
  });
}

void Lifecycle::ShowStarted() {
  needs_.display.SetTrayIconMenuForStartedApplication();
  needs_.display.SetMainFormMenuForStartedApplication();
  needs_.display.SetTrayFormForStartedApplication();
  needs_.display.ChangeTrayIconToIdle();
  needs_.display.DeleteTrayBaloonTooltip();
  needs_.display.PopulateTransferSubmenuData();
}

void Lifecycle::ShowStopped() {
  needs_.display.SetTrayIconMenuForStoppedApplication();
  needs_.display.SetMainFormMenuForStoppedApplication();
  needs_.display.SetTrayFormForStoppedApplication();
  ShowStoppedIcon();
}

/// An error of the line is logged and answered with false: the application then
/// stays alive in the stopped state.
bool Lifecycle::OnApplicationStart() {
  return procedure_.Outermost(
      "OnApplicationStart",
      [&] {
        if (!needs_.line.IsLineIdSet()) return false;
        needs_.line.StartLineListening(needs_.line.GetCurrentLineId());
        return true;
      },
      [](const base::RuntimeError&) { return false; });
}

void Lifecycle::StopApplication() {
  procedure_.Outermost("StopApplication", [&] {
    try {
      OnApplicationStop();
    } catch (const base::RuntimeError&) {
      // Logged on its way: a stop that fails half-way still ends in the stopped state.
      ShowStoppedIcon();
    }
    needs_.flags.ApplicationStarted = false;
    needs_.display.SetTrayIconMenuForStoppedApplication();
    needs_.display.SetTrayFormForStoppedApplication();
    needs_.display.SetMainFormMenuForStoppedApplication();
  });
}

void Lifecycle::OnApplicationStop() {
  procedure_("OnApplicationStop", [&] {
    if (needs_.flags.CallInProgress) needs_.line.DropCall(true);
    // Nothing more will be heard of the call, nor of one that was connected without having been offered.
    needs_.flags.CallInProgress = false;
    needs_.flags.CallAccepted = false;
    needs_.line.StopLineListening();
    ShowStoppedIcon();
  });
}

void Lifecycle::ShowStoppedIcon() {
  needs_.display.ChangeTrayIconToStoppedApplication();
  needs_.display.DeleteTrayBaloonTooltip();
}

}  // namespace kestro::core::Functions
