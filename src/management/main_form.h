#pragma once

#include <functional>

#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/foreground.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "forms/grid.h"

namespace kestro::management {

/// The main window: filter, grid, tool bar and menus of the contacts. Holds the
/// controls and its own coming and going; what is done with contacts is
/// ContactList.
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

  /// Shows the window in its normal size and brings it to the foreground.
  void BringUp();
  /// Shows it and takes it to the front; a maximised window stays so.
  void ShowInFront();
  /// Without a notification area the window is the only way to the application:
  /// closing it then minimises it instead of hiding it.
  void StayReachable() { stays_reachable_ = true; }

  /// Numbers of the tool-bar buttons; 4 and 6 are gaps.
  enum Tool : int { kToolNew = 1, kToolEdit = 2, kToolDelete = 3, kToolCall = 5, kToolGap = 6, kToolWeb = 7 };

  /// The application's start-up, plugged in by the application: runs when the window loads.
  forms::Handler on_load;
  /// The window could not be loaded, and with it the application.
  std::function<void(const base::RuntimeError&)> on_load_failed;
  /// Plugged in by ContactList.
  forms::Handler on_activate;
  forms::Handler on_unload;

  using Role = forms::MenuItem::Role;

  forms::MenuItem mnuApplication{*this, nullptr, "mnuApplication", Role::kBar};
  forms::MenuItem mnuExit{*this, &mnuApplication, "mnuExit"};
  forms::MenuItem mnuContact{*this, nullptr, "mnuContact", Role::kBar};
  forms::MenuItem mnuNewContact{*this, &mnuContact, "mnuNewContact"};
  forms::MenuItem mnuEditContact{*this, &mnuContact, "mnuEditContact"};
  forms::MenuItem mnuDeleteContact{*this, &mnuContact, "mnuDeleteContact"};
  forms::MenuItem mnuSeparator1{*this, &mnuContact, "mnuSeparator1", Role::kSeparator};
  forms::MenuItem mnuImportContacts{*this, &mnuContact, "mnuImportContacts"};
  forms::MenuItem mnuSettings{*this, nullptr, "mnuSettings", Role::kBar};
  forms::MenuItem mnuUserFields{*this, &mnuSettings, "mnuUserFields"};
  forms::MenuItem mnuPhoneLines{*this, &mnuSettings, "mnuPhoneLines"};
  forms::MenuItem mnuAppHelp{*this, nullptr, "mnuAppHelp", Role::kBar};
  forms::MenuItem mnuHelpContents{*this, &mnuAppHelp, "mnuHelpContents"};
  forms::MenuItem mnuAbout{*this, &mnuAppHelp, "mnuAbout"};

  forms::ToolBar ActionToolbar{
      *this, nullptr, "ActionToolbar", {"new", "edit", "delete", "", "call", "", "web"}};
  forms::Frame FilterFrame{*this, nullptr, "FilterFrame"};
  forms::Label lblClassNameName{*this, &FilterFrame, "lblClassNameName"};
  forms::TextBox txtName{*this, &FilterFrame, "txtName"};
  forms::Label lblCompany{*this, &FilterFrame, "lblCompany"};
  forms::TextBox txtCompany{*this, &FilterFrame, "txtCompany"};
  forms::Label lblCity{*this, &FilterFrame, "lblCity"};
  forms::TextBox txtCity{*this, &FilterFrame, "txtCity"};
  forms::Label lblNote{*this, &FilterFrame, "lblNote"};
  forms::TextBox txtNote{*this, &FilterFrame, "txtNote"};
  forms::Button btnSearch{*this, &FilterFrame, "btnSearch", forms::Button::Role::kDefault};
  forms::Button btnSearchAll{*this, &FilterFrame, "btnSearchAll"};
  forms::Grid ContactsGrid;

 private:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void Form_Unload() override;
  void LayOut();
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
