#pragma once

#include <map>

#include "faults/failing_world.h"
#include "scenario/line_actions.h"
#include "scenario/script.h"
#include "scenario/window_actions.h"

namespace kestro::faults {

inline constexpr std::string_view kMain = "frmMainForm";
inline constexpr std::string_view kEditor = "frmEditContact";
inline constexpr std::string_view kNumber = "602111222";

// What the user does, as scenarios are written: everything that reaches for something outside.
inline constexpr std::string_view kEntering = R"(
click SystemTrayForm.mnuContactsList
file "C:\\Data\\photo.png"
click frmMainForm.mnuNewContact
click frmMainForm.mnuPhoneLines
click frmMainForm.mnuUserFields
click SystemTrayForm.mPopSettings
)";
inline constexpr std::string_view kKnownCall = R"(
call 0x101 offering from "602111222"
tray left
call 0x101 connected to "602111222"
call 0x101 disconnected
call 0x101 idle
)";
inline constexpr std::string_view kOtherThings = R"(
# a call that is handed on, at the second attempt
call 0x101 offering from "602111222"
click ContactDetail.cmdEdit
type frmEditContact.txtNote "changed"
click frmEditContact.cmdOK
call 0x101 connected to "602111222"
choose SystemTrayForm.mnuRedirectList 1
reply 1 -1
choose ContactDetail.cmbRedirectTo 1
reply 2 0
call 0x101 idle
# unknown and internal
call 0x101 offering from "777888999"
click UnknownContact.cmdNew
click frmEditContact.cmdCancel
click UnknownContact.cmdClose
call 0x101 idle
call 0x101 offering from "21" origin internal
call 0x101 idle
# the list
type frmMainForm.txtName "nobody"
click frmMainForm.btnSearch
type frmMainForm.txtName "jan"
click frmMainForm.btnSearch
header frmMainForm.ContactsGrid 1
row frmMainForm.ContactsGrid 0
click frmMainForm.mnuEditContact
row frmMainForm.ContactsGrid 0
answer no
click frmMainForm.mnuDeleteContact
tool frmMainForm.ActionToolbar 5
click frmMainForm.mnuPhoneLines
file "C:\\Data\\import.csv"
click frmMainForm.mnuImportContacts
# help
click frmMainForm.mnuHelpContents
click frmMainForm.mnuAbout
click frmAbout.cmdSysInfo
click frmSystemInformation.cmdCopy
click frmSystemInformation.cmdClose
click frmAbout.cmdOK
)";

inline const std::map<std::string_view, std::string_view> kEntries = {
    {"txtName", "Jan Nov\xC3\xA1k"}, {"txtPhone1", kNumber},     {"txtLine", "21"},
    {"txtUserField1", "One"},        {"txtUserField2", "Two"},   {"txtUserField3", "Three"},
    {"txtUserField4", "Four"},       {"txtNote", "line\r\ntwo"},
};

/// What a user does with the program from its start to its end. Goes on as well
/// as it can when something fails.
class UsersDay {
 public:
  explicit UsersDay(FailingWorld& world) : world_(world) {
    world_.SetModalUser([this](forms::Form& window) { UseModal(window); });
  }

  /// The first start, entries, calls, tools; to the point where the program would be left.
  void First(FaultPlan& plan) {
    Start(plan);
    for (const auto script : {kEntering, kKnownCall, kOtherThings}) Play(script);
  }
  /// A later start and a call, without any entry.
  void Later(FaultPlan& plan) {
    Start(plan);
    Play(kKnownCall);
  }
  void Start(FaultPlan& plan) {
    plan_ = &plan;
    world_.Start(plan);
  }
  void Play(std::string_view script) {
    for (const scenario::Action& action : scenario::ParseScript(script)) {
      world_.Do(action.text, [&] { Perform(action); });
    }
  }
  /// Leaves the program.
  void Leave() { Play("click SystemTrayForm.mPopExit"); }

 private:
  void Perform(const scenario::Action& action) {
    scenario::Session& session = world_.session();
    if (action.kind == scenario::ActionKind::kFile) return session.file_dialogs.Queue(action.Text(0));
    if (action.kind == scenario::ActionKind::kAnswer) return session.boxes.Queue(ports::BoxAnswer::kNo);
    if (scenario::PerformLineAction(action, session.exchange, session.machine.CodePage())) return;
    try {
      if (!scenario::PerformWindowAction(action, session))
        throw std::logic_error("an action of another kind");
      if (!plan_->fired() && world_.transcript().ContainsBeginning("refused"))
        world_.Find("refused: " + action.text);
    } catch (const scenario::ScriptError&) {
      if (!plan_->fired()) throw;  // otherwise what the action is about is missing because of the fault
    }
  }

  /// Every window is left by its own buttons; one that stays open is a finding.
  void UseModal(forms::Form& window) {
    if (window.name() == test::kImportProgress) return;
    StoreTooEarly(window);
    FillIn(window);
    if (window.name() == "Settings" && !HasLine(window)) ClickIn(window, "CancelButton");
    if (window.name() == "frmPhoneLinesList") UseLines(window);
    for (const char* button : {"cmdOK", "OKButton", "btnClose", "cmdClose", "cmdCancel", "CancelButton"}) {
      if (window.visible()) ClickIn(window, button);
    }
    if (window.visible()) world_.driver().Close(window, forms::kControlMenu);
  }
  /// With an entry missing, which the window says.
  void StoreTooEarly(forms::Form& window) {
    if (window.name() == kEditor) {
      const auto& name = dynamic_cast<const forms::TextBox&>(*window.FindControl("txtName"));
      if (name.text().empty()) ClickIn(window, "cmdOK");
    }
    if (window.name() == "frmEditLine" || window.name() == "frmUserFieldsNames") ClickIn(window, "OKButton");
  }
  void FillIn(forms::Form& window) {
    for (const auto& [name, text] : kEntries) {
      forms::Control* control = window.FindControl(name);
      if (control != nullptr && window.visible()) world_.driver().Type(window, *control, text);
    }
    ClickIn(window, "cmdChangePicture");
  }
  /// Whether a line is chosen in the settings, after a try to choose one.
  [[nodiscard]] bool HasLine(forms::Form& settings) {
    auto& lines = dynamic_cast<forms::ComboBox&>(*settings.FindControl("LinesCombo"));
    if (lines.list_index() < 0) world_.driver().Choose(settings, lines, 0);
    return lines.list_index() >= 0;
  }
  /// The first one is added, and later deleted again.
  void UseLines(forms::Form& window) {
    auto& grid = dynamic_cast<forms::Grid&>(*window.FindControl("LinesGrid"));
    ClickIn(window, "cmdEdit");  // nothing is chosen yet
    const bool there = world_.driver().PressRow(window, grid, 0);
    ClickIn(window, there ? "cmdDelete" : "cmdNew");
  }
  void ClickIn(forms::Form& window, std::string_view control) {
    forms::Control* target = window.FindControl(control);
    if (window.loaded() && target != nullptr) world_.driver().Click(window, *target);
  }

  FailingWorld& world_;
  const FaultPlan* plan_ = nullptr;
};

}  // namespace kestro::faults
