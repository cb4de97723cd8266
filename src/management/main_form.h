#pragma once

#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/foreground.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::management {

/// The main window.
class frmMainForm final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::Functions::ApplicationEnding& ending;
    core::ForceFore& foreground;
  };
  frmMainForm(forms::FormHost& host, const Needs& needs);

  /// Shows the window as it stands and brings it to the foreground.
  void BringUp();
  /// Without a notification area the window is the only way to the application:
  /// closing it then minimises it instead of hiding it.
  void StayReachable() { stays_reachable_ = true; }

  /// The application's start-up, plugged in by the application: runs when the window loads.
  forms::Handler on_load;

  forms::MenuItem mnuApplication{*this, nullptr, "mnuApplication", forms::MenuItem::Role::kBar};
  forms::MenuItem mnuExit{*this, &mnuApplication, "mnuExit"};

 private:
  void Form_Load() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void GetFormTextTranslation();
  void mnuExit_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  core::Functions::ApplicationEnding& ending_;
  core::ForceFore& foreground_;
  bool stays_reachable_ = false;
};

}  // namespace kestro::management
