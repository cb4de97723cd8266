#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "soak/soak_world.h"

namespace kestro::soak {

inline constexpr int kMostDepth = 3;
inline constexpr int kMostModalActions = 8;
inline constexpr std::string_view kTray = "SystemTrayForm";

inline constexpr std::array kTrayEvents = {ports::kLeftButtonUp, ports::kRightButtonUp,
                                           ports::kLeftDoubleClick, ports::kBalloonUserClick};
inline constexpr std::array kTrayControls = {"mPopStartStop",     "mPopSettings",    "mnuContactsList",
                                             "mAboutForm",        "btnIncomingCall", "btnAcceptCall",
                                             "btnDisconnectCall", "btnTransferCall"};
inline constexpr std::array kKeys = {"F5",   "Ctrl+F", "Ctrl+N", "Del",    "Enter",  "Esc", "Up",
                                     "Down", "Home",   "End",    "Alt+F4", "Ctrl+A", "F1"};
inline constexpr std::array kTexts = {"",
                                      " ",
                                      "Jan Nov\xC3\xA1k",
                                      "%%p%%p",
                                      "'; DROP TABLE Contact; --",
                                      "21",
                                      "007",
                                      "\xF0\x9F\x93\x9E",
                                      "\r\n\t",
                                      "0123456789",
                                      "1e999",
                                      "99999999999",
                                      "\xC3",
                                      "a\001b",
                                      "&&File"};

/// Entries and buttons that end the application.
inline bool Ends(const forms::Control& control) {
  return control.name() == "mnuExit" || control.name() == "mPopExit";
}

/// What a user does, at random: the tray icon and its menu, the windows on the
/// screen, keys. Whatever cannot be reached is tried all the same.
class UserSide {
 public:
  explicit UserSide(SoakWorld& world) : world_(world) {}

  /// One action.
  void Act() {
    switch (random().Below(10)) {
      case 0:
      case 1:
        return PressTray();
      case 2:
        return ChooseFromTrayMenu();
      default:
        if (forms::Form* form = AnyWindow()) return UseWindow(*form);
        PressTray();
    }
  }
  /// Some actions in a modal window, then closes it.
  void UseModal(forms::Form& window) {
    const base::ScopeValue scope(depth_, depth_ + 1);
    const int actions = depth_ > kMostDepth ? 0 : random().Below(kMostModalActions);
    for (int action = 0; action < actions && window.visible(); ++action) {
      if (random().OneIn(5)) {
        Act();
      } else {
        UseWindow(window);
      }
    }
    if (window.name() == test::kImportProgress) return;
    if (actions > 0 && random().OneIn(2)) FillIn(window);
    for (const char* button : {"OKButton", "cmdOK", "CancelButton", "cmdCancel"}) {
      forms::Control* control = window.FindControl(button);
      if (window.visible() && control != nullptr && random().OneIn(2)) UseControl(window, *control);
    }
    if (window.visible()) Close(window);
  }
  /// Starts monitoring when it is off.
  void SwitchOn() {
    if (world_.application().Flags().ApplicationStarted) return;
    forms::Form& tray = world_.Window(kTray);
    UseControl(tray, *tray.FindControl("mPopStartStop"));
  }
  void PressTray() {
    world_.At(InWindow(kTray, "icon"),
              [&] { world_.session().notification_area.SendEvent(random().Pick(kTrayEvents)); });
  }
  /// Tries to end the application in one of the user's ways, or in the session's.
  void EndApplication() {
    struct Way {
      const char* reason;
      std::function<void()> go;
    };
    const auto click = [this](std::string_view window, std::string_view control) {
      forms::Form& form = world_.Window(window);
      driver().Click(form, *form.FindControl(control));
    };
    forms::Form& card = world_.Window("ContactDetail");
    const Way ways[] = {{"the tray menu", [&] { click(kTray, "mPopExit"); }},
                        {"the card's close button",
                         [&] {
                           if (card.visible()) driver().Close(card, forms::kControlMenu);
                         }},
                        {"the main menu", [&] { click("frmMainForm", "mnuExit"); }},
                        {"the session", [&] { world_.application().End(); }}};
    const Way& way = random().Pick(ways);
    world_.ExpectEnd(way.reason);
    way.go();
    world_.ExpectNoEnd();  // that way was not open just now
  }

 private:
  void ChooseFromTrayMenu() {
    forms::Form& tray = world_.Window(kTray);
    if (random().OneIn(2)) {
      const int element = random().Below(5);
      if (forms::Control* line = tray.FindControl("mnuRedirectList", element)) UseControl(tray, *line);
      return;
    }
    UseControl(tray, *tray.FindControl(random().Pick(kTrayControls)));
  }
  void UseWindow(forms::Form& form) {
    if (random().OneIn(8)) return PressKey(form);
    if (random().OneIn(8)) return Close(form);
    const auto& controls = form.controls();
    if (!controls.empty()) UseControl(form, *random().Pick(controls));
  }
  void UseControl(forms::Form& form, forms::Control& control) {
    if (Ends(control)) return;
    Prepare(control);
    world_.At(InWindow(form.name(), control.name()), [&] {
      const forms::ControlKind kind = control.kind();
      if (kind == forms::ControlKind::kButton || kind == forms::ControlKind::kMenuItem) {
        driver().Click(form, control);
      } else if (auto* grid = dynamic_cast<forms::Grid*>(&control)) {
        UseGrid(form, *grid);
      } else if (auto* combo = dynamic_cast<forms::ComboBox*>(&control); combo && !random().OneIn(4)) {
        driver().Choose(form, *combo, random().Below(static_cast<int>(combo->items().size()) + 1));
      } else if (auto* box = dynamic_cast<forms::CheckBox*>(&control)) {
        driver().Check(form, *box, random().OneIn(2));
      } else if (auto* bar = dynamic_cast<forms::ToolBar*>(&control)) {
        driver().PressTool(form, *bar, 1 + random().Below(bar->count()));
      } else if (combo != nullptr || kind == forms::ControlKind::kTextBox) {
        driver().Type(form, control, AnyText(control.name()));
      } else {
        driver().Choose(form, control, random().Below(8));
      }
    });
  }
  void UseGrid(forms::Form& form, forms::Grid& grid) {
    const int row = random().Below(static_cast<int>(grid.row_count()) + 2) - 1;
    if (random().OneIn(4)) {
      driver().PressHeader(form, grid, random().Below(5));
    } else if (random().OneIn(3)) {
      driver().DoubleClickRow(form, grid, row);
    } else {
      driver().PressRow(form, grid, row);
    }
  }
  /// Something in most of the fields, as somebody does who wants to store it.
  void FillIn(forms::Form& window) {
    for (forms::Control* control : window.controls()) {
      if (!window.visible()) return;
      if (control->kind() == forms::ControlKind::kTextBox && !random().OneIn(4)) UseControl(window, *control);
    }
  }
  void PressKey(forms::Form& form) {
    const auto key = forms::ParseKey(random().Pick(kKeys));
    world_.At(InWindow(form.name()), [&] { driver().PressKey(form, *key); });
  }
  /// The card has no way to close but its button: anything else ends the application.
  void Close(forms::Form& form) {
    if (form.name() == "ContactDetail") return;
    world_.At(InWindow(form.name()), [&] { driver().Close(form, forms::kControlMenu); });
  }
  /// What the file dialog behind a button will be told.
  void Prepare(const forms::Control& control) {
    auto& dialogs = world_.session().file_dialogs;
    if (control.name() == "cmdChangePicture" && dialogs.queued() == 0 && random().OneIn(4)) {
      dialogs.Queue(random().OneIn(2) ? "C:\\Program\\DBTemplate.tpl" : "C:\\Program\\Picture.png");
    }
    if (control.name() == "mnuImportContacts" && dialogs.queued() == 0) {
      dialogs.Queue(random().OneIn(4) ? "C:\\Data\\missing.csv" : "C:\\Data\\import.csv");
    }
    if (control.name() == "ChoosePathToDB" && dialogs.queued() == 0) {
      dialogs.Queue(random().OneIn(2) ? std::string(kOtherDatabase) : std::string(kDatabase));
    }
  }
  /// Mostly the modal one, if there is one; the tray menu stays in reach of the user.
  [[nodiscard]] forms::Form* AnyWindow() {
    std::vector<forms::Form*> shown = world_.application().Forms();
    std::erase_if(shown, [this](const forms::Form* form) {
      return !form->visible() || !world_.session().windows.InUsersReach(*form);
    });
    return shown.empty() ? nullptr : random().Pick(shown);
  }
  [[nodiscard]] std::string AnyText(std::string_view control) {
    if (control == "DBPathTextBox") {
      if (random().OneIn(3)) return R"(C:\Program\Icons\idle.ico)";
      return std::string(random().OneIn(2) ? kDatabase : kOtherDatabase);
    }
    if (random().OneIn(10)) return std::string().append(static_cast<std::size_t>(random().Below(600)), 'x');
    return random().Pick(kTexts);
  }

  [[nodiscard]] forms::FrontEndDriver& driver() { return world_.driver(); }
  [[nodiscard]] Random& random() { return world_.random(); }

  SoakWorld& world_;
  int depth_ = 0;  // of modal windows
};

}  // namespace kestro::soak
