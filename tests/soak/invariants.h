#pragma once

#include <algorithm>
#include <string>

#include "ports/file_system.h"
#include "scenario/dumps.h"
#include "soak/soak_world.h"
#include "whole/catalogue_numbers.h"

namespace kestro::soak {

class Checker {
 public:
  explicit Checker(SoakWorld& world)
      : world_(world), application_(world.application()), flags_(application_.Flags()) {}

  void Expect(bool holds, const char* what) {
    if (holds) return;
    world_.Find(std::string(what) + ": " + scenario::DumpFlags(application_) + " / " +
                scenario::DumpCall(application_) + " / icon " + Icon());
  }

  void CheckFlags() {
    Expect(!flags_.ShuttingDown, "the application is being shut down");
    Expect(!flags_.ModalDialogOpen, "no dialog is open, and the flag says one is");
    Expect(!flags_.SettingsShownAtStartup, "the start is over, and the flag says its settings are open");
    Expect(!flags_.ApplicationStarted || world_.session().exchange.line_open(),
           "monitoring is on and no line is open");
    const bool call = flags_.CallInProgress || flags_.CallAccepted;
    Expect(!call || world_.session().exchange.line_open(), "a call without an open line");
  }

  void CheckIcon() {
    const std::string icon = Icon();
    if (!flags_.ApplicationStarted) {
      // A line that could not be closed still reports its calls.
      Expect(icon == "stopped" || world_.session().exchange.line_open(), "the icon of a stopped application");
    } else if (!flags_.CallInProgress && !flags_.CallAccepted) {
      Expect(icon == "idle", "the icon of an idle line");
    } else {
      Expect(icon == "accepted" || (icon == "ringing" && flags_.CallInProgress), "the icon of a call");
    }
  }

  void CheckBalloon() {
    const auto& record = application_.TrayIconData();
    const std::string title = scenario::FieldText(record.szInfoTitle, world_.session().machine.CodePage());
    if (title.empty()) return;
    const auto numbers = test::CatalogueNumbersOf(title);
    Expect(std::ranges::any_of(numbers, [](int number) { return number >= 279 && number <= 281; }),
           "a balloon with another title");
  }

  void CheckControls() {
    const bool may_transfer = flags_.CallAccepted && flags_.RedirectAllowed;
    for (const char* window : {"ContactDetail", "UnknownContact"}) {
      const forms::Control* combo = application_.FindForm(window)->FindControl("cmbRedirectTo");
      Expect(may_transfer || !combo->enabled(), "a transfer is offered that is not possible");
    }
    const forms::Control* start_stop = application_.FindForm("SystemTrayForm")->FindControl("mPopStartStop");
    Expect(dynamic_cast<const forms::MenuItem&>(*start_stop).checked() == flags_.ApplicationStarted,
           "the tray menu tells another state");
  }

  void CheckWindows() {
    for (const forms::Form* form : application_.Forms()) {
      Expect(!form->modal(), "a window is still modal");
      Expect(!form->visible() || form->loaded(), "a window is visible and not loaded");
    }
  }

  void CheckCallWindowsAreGone() {
    for (const char* window : {"ContactDetail", "UnknownContact", "InternalCall"}) {
      Expect(!application_.FindForm(window)->visible(), "a call window is left, and the settings hide them");
    }
  }

 private:
  /// "idle" of "...\\Icons\\idle.ico".
  std::string Icon() {
    const auto file = world_.session().notification_area.IconFile(application_.TrayIconData().hIcon);
    const std::string name = ports::GetFileName(file);
    return name.substr(0, name.find('.'));
  }

  SoakWorld& world_;
  app::Application& application_;
  const core::ApplicationFlags& flags_;
};

/// Checks what must hold whenever the application waits for events: flags that
/// contradict each other, windows that should be gone, a tray icon of another
/// state, a line that is open twice. What is wrong goes to the world's findings.
inline void CheckAtRest(SoakWorld& world) {
  Checker checker(world);
  checker.CheckFlags();
  checker.CheckIcon();
  checker.CheckBalloon();
  checker.CheckControls();
  checker.CheckWindows();
}

/// Checks what must hold right after a call was reported as over.
inline void CheckAfterCall(SoakWorld& world) {
  Checker checker(world);
  const auto* hide = dynamic_cast<const forms::CheckBox*>(
      world.application().FindForm("Settings")->FindControl("chkHideContactWindow"));
  if (hide->value() == 1) checker.CheckCallWindowsAreGone();
  const core::ApplicationFlags& flags = world.application().Flags();
  checker.Expect(!flags.CallInProgress && !flags.CallAccepted && !flags.ContactDetailShown,
                 "the call is over and its flags are left");
}

}  // namespace kestro::soak
