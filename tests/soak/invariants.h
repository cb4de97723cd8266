#pragma once

#include <algorithm>
#include <string>

#include "ports/file_system.h"
#include "scenario/dumps.h"
#include "soak/soak_world.h"

namespace kestro::soak {

/// What must hold whatever has happened: flags, tray icon, windows and menus agree
/// with each other. What is wrong goes to the world's findings.
class Invariants {
 public:
  explicit Invariants(SoakWorld& world)
      : world_(world), application_(world.application()), flags_(application_.Flags()) {}

  /// Whenever the application waits for events.
  void CheckAtRest() {
    CheckFlags();
    CheckIcon();
    CheckControls();
    for (const forms::Form* form : application_.Forms()) {
      Expect(!form->modal(), "a window is still modal");
      Expect(!form->visible() || form->loaded(), "a window is visible and not loaded");
    }
  }
  /// Right after a call was reported as over.
  void CheckAfterCall() {
    const auto* hide =
        dynamic_cast<const forms::CheckBox*>(world_.Window("Settings").FindControl("chkHideContactWindow"));
    for (const char* window : {"ContactDetail", "UnknownContact", "InternalCall"}) {
      Expect(hide->value() != 1 || !world_.Window(window).visible(),
             "a call window is left, and the settings hide them");
    }
    Expect(!CallIsOn() && !flags_.ContactDetailShown, "the call is over and its flags are left");
  }

 private:
  void Expect(bool holds, const char* what) {
    if (holds) return;
    world_.Find(std::string(what) + ": " + scenario::DumpFlags(application_) + " / " +
                scenario::DumpCall(application_) + " / icon " + Icon());
  }
  [[nodiscard]] bool CallIsOn() const { return flags_.CallInProgress || flags_.CallAccepted; }
  [[nodiscard]] bool LineIsOpen() const { return world_.session().exchange.line_open(); }

  void CheckFlags() {
    Expect(!flags_.ShuttingDown, "the application is being shut down");
    Expect(!flags_.ModalDialogOpen, "no dialog is open, and the flag says one is");
    Expect(!flags_.SettingsShownAtStartup, "the start is over, and the flag says its settings are open");
    Expect(LineIsOpen() || !flags_.ApplicationStarted, "monitoring is on and no line is open");
    Expect(LineIsOpen() || !CallIsOn(), "a call without an open line");
  }
  void CheckIcon() {
    const std::string icon = Icon();
    if (!flags_.ApplicationStarted) {
      // A line that could not be closed still reports its calls.
      Expect(icon == "stopped" || LineIsOpen(), "the icon of a stopped application");
    } else if (!CallIsOn()) {
      Expect(icon == "idle", "the icon of an idle line");
    } else {
      Expect(icon == "accepted" || (icon == "ringing" && flags_.CallInProgress), "the icon of a call");
    }
  }
  void CheckControls() {
    const bool may_transfer = flags_.CallAccepted && flags_.RedirectAllowed;
    for (const char* window : {"ContactDetail", "UnknownContact"}) {
      Expect(may_transfer || !world_.Window(window).FindControl("cmbRedirectTo")->enabled(),
             "a transfer is offered that is not possible");
    }
    const forms::Control* start_stop = world_.Window("SystemTrayForm").FindControl("mPopStartStop");
    Expect(dynamic_cast<const forms::MenuItem&>(*start_stop).checked() == flags_.ApplicationStarted,
           "the tray menu tells another state");
  }
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

}  // namespace kestro::soak
