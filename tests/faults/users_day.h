#pragma once

#include <map>

#include "faults/failing_world.h"

namespace kestro::faults {

inline constexpr std::string_view kMain = "frmMainForm";
inline constexpr std::string_view kTray = "SystemTrayForm";
inline constexpr std::string_view kEditor = "frmEditContact";
inline constexpr std::string_view kNumber = "602111222";
inline constexpr ports::CallHandle kCall = 0x101;

inline const std::map<std::string_view, std::string_view> kEntries = {
    {"txtName", "Jan Nov\xC3\xA1k"}, {"txtPhone1", kNumber},     {"txtLine", "21"},
    {"txtUserField1", "One"},        {"txtUserField2", "Two"},   {"txtUserField3", "Three"},
    {"txtUserField4", "Four"},       {"txtNote", "line\r\ntwo"},
};

inline exchange::Call ExternalCall(std::string_view number) {
  exchange::Call call;
  call.handle = kCall;
  call.caller_id = number;
  return call;
}

/// What a user does with the program from its start to its end: everything that
/// reaches for something outside. Goes on as well as it can when something fails.
class UsersDay {
 public:
  explicit UsersDay(FailingWorld& world) : world_(world) {
    world_.SetModalUser([this](forms::Form& window) { UseModal(window); });
  }

  /// The first start, entries, calls, tools; to the point where the program would be left.
  void First(FaultPlan& plan) {
    world_.Start(plan);
    Click(kTray, "mnuContactsList");
    EnterContact();
    EnterLines();
    ChangeSettings();
    KnownCall();
    TransferredCall();
    OtherCalls();
    UseList();
    ImportContacts();
    UseTools();
  }
  /// A later start and a call, without any entry.
  void Later(FaultPlan& plan) {
    world_.Start(plan);
    KnownCall();
  }
  /// Leaves the program.
  void Leave() { Click(kTray, "mPopExit"); }

  /// A call from a number that First has entered: offered, taken, ended.
  void KnownCall() {
    world_.Do("call", [&] { world_.session().exchange.Offer(ExternalCall(kNumber)); });
    world_.Do("the icon is pressed",
              [&] { world_.session().notification_area.SendEvent(ports::kLeftButtonUp); });
    world_.Do("the call is taken", [&] { world_.session().exchange.Connect(kCall, std::string(kNumber)); });
    world_.Do("the call is over", [&] {
      world_.session().exchange.Disconnect(kCall);
      world_.session().exchange.Idle(kCall);
    });
  }

 private:
  void EnterContact() {
    world_.session().file_dialogs.Queue("C:\\Data\\photo.png");
    Click(kMain, "mnuNewContact");
  }
  void EnterLines() {
    Click(kMain, "mnuPhoneLines");
    Click(kMain, "mnuUserFields");
  }
  void UseList() {
    Type(kMain, "txtName", "nobody");
    Click(kMain, "btnSearch");
    Type(kMain, "txtName", "jan");
    Click(kMain, "btnSearch");
    world_.Do("a column is sorted", [&] {
      forms::Form& main = Window(kMain);
      driver().PressHeader(main, dynamic_cast<forms::Grid&>(*main.FindControl("ContactsGrid")), 1);
    });
    const auto row = [&] {
      forms::Form& main = Window(kMain);
      driver().PressRow(main, dynamic_cast<forms::Grid&>(*main.FindControl("ContactsGrid")), 0);
    };
    world_.Do("a row is chosen", row);
    Click(kMain, "mnuEditContact");
    world_.Do("a row is chosen", row);
    world_.session().boxes.Queue(ports::BoxAnswer::kNo);
    Click(kMain, "mnuDeleteContact");
    world_.Do("the contact is dialled", [&] {
      forms::Form& main = Window(kMain);
      driver().PressTool(main, dynamic_cast<forms::ToolBar&>(*main.FindControl("ActionToolbar")), 5);
    });
    deleting_ = true;
    Click(kMain, "mnuPhoneLines");
    deleting_ = false;
  }
  void UseTools() {
    Click(kMain, "mnuHelpContents");
    Click(kMain, "mnuAbout");
    Click("frmAbout", "cmdSysInfo");
    Click("frmSystemInformation", "cmdCopy");
    Click("frmSystemInformation", "cmdClose");
    Click("frmAbout", "cmdOK");
    world_.Do("a second start", [&] { world_.application().Activate(); });
  }
  void ChangeSettings() { Click(kTray, "mPopSettings"); }
  void TransferredCall() {
    world_.Do("call", [&] { world_.session().exchange.Offer(ExternalCall(kNumber)); });
    Click("ContactDetail", "cmdEdit");
    Type(kEditor, "txtNote", "changed");
    Click(kEditor, "cmdOK");
    world_.Do("the call is taken", [&] { world_.session().exchange.Connect(kCall, std::string(kNumber)); });
    world_.Do("the call is handed on", [&] {
      forms::Form& tray = Window(kTray);
      if (forms::Control* line = tray.FindControl("mnuRedirectList", 1)) driver().Click(tray, *line);
    });
    world_.Do("the exchange refuses", [&] { world_.session().exchange.Reply(1, -1); });
    world_.Do("the call is handed on", [&] {
      forms::Form& card = Window("ContactDetail");
      driver().Choose(card, *card.FindControl("cmbRedirectTo"), 1);
    });
    world_.Do("the exchange accepts", [&] { world_.session().exchange.Reply(2, 0); });
    world_.Do("the call is over", [&] { world_.session().exchange.Idle(kCall); });
  }
  void OtherCalls() {
    world_.Do("unknown call", [&] { world_.session().exchange.Offer(ExternalCall("777888999")); });
    Click("UnknownContact", "cmdNew");
    Click(kEditor, "cmdCancel");
    Click("UnknownContact", "cmdClose");
    world_.Do("the call is over", [&] { world_.session().exchange.Idle(kCall); });
    exchange::Call internal = ExternalCall("21");
    internal.origin = exchange::kOriginInternal;
    world_.Do("internal call", [&] { world_.session().exchange.Offer(internal); });
    world_.Do("the call is over", [&] { world_.session().exchange.Idle(kCall); });
  }
  /// Nothing to press in a build without the import.
  void ImportContacts() {
    world_.machine().WriteFile("C:\\Data\\import.csv",
                               "Eva Mal\xE1;Firma;;585000111\r\nPetr;;;585000112\r\n");
    world_.Do("import", [&] {
      if (!Window(kMain).FindControl("mnuImportContacts")->enabled()) return;
      world_.session().file_dialogs.Queue("C:\\Data\\import.csv");
      ClickIn(Window(kMain), "mnuImportContacts");
    });
  }
  /// Every window is left by its own buttons; one that stays open is a finding.
  void UseModal(forms::Form& window) {
    if (window.name() == "frmContactImportProgress") return;  // it goes by itself when the import is over
    StoreTooEarly(window);
    FillIn(window);
    if (window.name() == "Settings" && !HasLine(window)) ClickIn(window, "CancelButton");
    if (window.name() == "frmPhoneLinesList") {
      auto& grid = dynamic_cast<forms::Grid&>(*window.FindControl("LinesGrid"));
      ClickIn(window, "cmdEdit");  // nothing is chosen yet
      if (deleting_) driver().PressRow(window, grid, 0);
      ClickIn(window, deleting_ ? "cmdDelete" : "cmdNew");
    }
    for (const char* button : {"cmdOK", "OKButton", "btnClose", "cmdClose", "cmdCancel", "CancelButton"}) {
      if (window.visible()) ClickIn(window, button);
    }
    if (window.visible()) driver().Close(window, forms::kControlMenu);
    if (!window.visible()) return;
    world_.findings().push_back("the window " + window.name() + " cannot be closed");
    window.Hide();
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
      if (control != nullptr && window.visible()) driver().Type(window, *control, text);
    }
    if (forms::Control* picture = window.FindControl("cmdChangePicture")) driver().Click(window, *picture);
  }
  /// Whether a line is chosen in the settings, after a try to choose one.
  [[nodiscard]] bool HasLine(forms::Form& settings) {
    auto& lines = dynamic_cast<forms::ComboBox&>(*settings.FindControl("LinesCombo"));
    if (lines.list_index() < 0) driver().Choose(settings, lines, 0);
    return lines.list_index() >= 0;
  }

  void Click(std::string_view window, std::string_view control) {
    world_.Do(std::string(window).append(".").append(control), [&] { ClickIn(Window(window), control); });
  }
  void Type(std::string_view window, std::string_view control, std::string_view text) {
    world_.Do(std::string(window).append(".").append(control), [&] {
      forms::Form& form = Window(window);
      driver().Type(form, *form.FindControl(control), text);
    });
  }
  void ClickIn(forms::Form& window, std::string_view control) {
    forms::Control* target = window.FindControl(control);
    if (window.loaded() && target != nullptr) driver().Click(window, *target);
  }
  [[nodiscard]] forms::FrontEndDriver& driver() { return world_.session().front_end.Driver(); }
  [[nodiscard]] forms::Form& Window(std::string_view name) { return *world_.application().FindForm(name); }

  FailingWorld& world_;
  bool deleting_ = false;  // the telephone line is deleted again
};

}  // namespace kestro::faults
