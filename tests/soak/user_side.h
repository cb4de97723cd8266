#pragma once

#include <array>
#include <string>
#include <string_view>

#include "soak/soak_world.h"

namespace kestro::soak {

inline constexpr int kMostDepth = 3;
inline constexpr int kMostModalActions = 8;
inline constexpr std::string_view kTray = "SystemTrayForm";
/// Goes by itself when the import is over.
inline constexpr std::string_view kImportProgress = "frmContactImportProgress";

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
                                      "a\x01"
                                      "b",
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
    struct Scope {
      int& depth;
      ~Scope() { --depth; }
    };
    ++depth_;
    const Scope scope{depth_};
    const int actions = depth_ > kMostDepth ? 0 : random().Below(kMostModalActions);
    for (int action = 0; action < actions && window.visible(); ++action) {
      if (random().OneIn(5)) {
        Act();
      } else {
        UseWindow(window);
      }
    }
    if (window.name() == kImportProgress) return;
    if (actions > 0 && random().OneIn(2)) FillIn(window);
    for (const char* button : {"OKButton", "cmdOK", "CancelButton", "cmdCancel"}) {
      forms::Control* control = window.FindControl(button);
      if (window.visible() && control != nullptr && random().OneIn(2)) Click(window, *control);
    }
    if (window.visible()) Close(window);
    if (window.visible()) {
      world_.Find("the window " + window.name() + " cannot be closed");
      window.Hide();
    }
  }
  /// Starts monitoring when it is off.
  void SwitchOn() {
    if (world_.application().Flags().ApplicationStarted) return;
    forms::Form& tray = Window(kTray);
    Click(tray, *tray.FindControl("mPopStartStop"));
  }
  void PressTray() {
    world_.At(InWindow(kTray, "icon"),
              [&] { world_.session().notification_area.SendEvent(random().Pick(kTrayEvents)); });
  }
  /// Tries to end the application in one of the user's ways, or in the session's.
  void EndApplication() {
    forms::Form& tray = Window(kTray);
    forms::Form& card = Window("ContactDetail");
    forms::Form& main = Window("frmMainForm");
    switch (random().Below(4)) {
      case 0:
        world_.ExpectEnd("the tray menu");
        driver().Click(tray, *tray.FindControl("mPopExit"));
        break;
      case 1:
        world_.ExpectEnd("the card's close button");
        if (card.visible()) driver().Close(card, forms::kControlMenu);
        break;
      case 2:
        world_.ExpectEnd("the main menu");
        driver().Click(main, *main.FindControl("mnuExit"));
        break;
      default:
        world_.ExpectEnd("the session");
        world_.application().End();
    }
    world_.ExpectNoEnd();  // that way was not open just now
  }

 private:
  void ChooseFromTrayMenu() {
    forms::Form& tray = Window(kTray);
    if (random().OneIn(2)) {
      const int element = random().Below(5);
      if (forms::Control* line = tray.FindControl("mnuRedirectList", element)) Click(tray, *line);
      return;
    }
    Click(tray, *tray.FindControl(random().Pick(kTrayControls)));
  }
  void UseWindow(forms::Form& form) {
    if (random().OneIn(8)) return PressKey(form);
    if (random().OneIn(8)) return Close(form);
    const auto& controls = form.controls();
    if (!controls.empty()) UseControl(form, *random().Pick(controls));
  }
  void UseControl(forms::Form& form, forms::Control& control) {
    using forms::ControlKind;
    switch (control.kind()) {
      case ControlKind::kButton:
      case ControlKind::kMenuItem:
        return Click(form, control);
      case ControlKind::kComboBox:
        return UseComboBox(form, dynamic_cast<forms::ComboBox&>(control));
      case ControlKind::kGrid:
        return UseGrid(form, dynamic_cast<forms::Grid&>(control));
      default:
        break;
    }
    world_.At(InWindow(form.name(), control.name()), [&] {
      if (auto* box = dynamic_cast<forms::CheckBox*>(&control)) {
        driver().Check(form, *box, random().OneIn(2));
      } else if (auto* bar = dynamic_cast<forms::ToolBar*>(&control)) {
        driver().PressTool(form, *bar, 1 + random().Below(bar->count()));
      } else if (control.kind() == ControlKind::kTextBox) {
        driver().Type(form, control, AnyText(control.name()));
      } else {
        driver().Choose(form, control, random().Below(8));
      }
    });
  }
  void UseGrid(forms::Form& form, forms::Grid& grid) {
    world_.At(InWindow(form.name(), grid.name()), [&] {
      const int row = random().Below(static_cast<int>(grid.row_count()) + 2) - 1;
      switch (random().Below(4)) {
        case 0:
          driver().PressHeader(form, grid, random().Below(5));
          break;
        case 1:
          driver().DoubleClickRow(form, grid, row);
          break;
        default:
          driver().PressRow(form, grid, row);
      }
    });
  }
  void UseComboBox(forms::Form& form, forms::ComboBox& combo) {
    world_.At(InWindow(form.name(), combo.name()), [&] {
      if (random().OneIn(4)) {
        driver().Type(form, combo, AnyText(combo.name()));
      } else {
        driver().Choose(form, combo, random().Below(static_cast<int>(combo.items().size()) + 1));
      }
    });
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
    std::array<forms::Form*, 16> shown{};
    int count = 0;
    for (forms::Form* form : world_.application().Forms()) {
      if (form->visible() && world_.session().windows.InUsersReach(*form))
        shown.at(static_cast<std::size_t>(count++)) = form;
    }
    return count == 0 ? nullptr : shown.at(static_cast<std::size_t>(random().Below(count)));
  }
  [[nodiscard]] std::string AnyText(std::string_view control) {
    if (control == "DBPathTextBox") {
      if (random().OneIn(3)) return "C:\\Program\\Icons\\idle.ico";
      return std::string(random().OneIn(2) ? kDatabase : kOtherDatabase);
    }
    if (random().OneIn(10)) return std::string(static_cast<std::size_t>(random().Below(600)), 'x');
    return random().Pick(kTexts);
  }
  void Click(forms::Form& form, forms::Control& control) {
    if (Ends(control)) return;
    Prepare(control);
    world_.At(InWindow(form.name(), control.name()), [&] { driver().Click(form, control); });
  }

  [[nodiscard]] forms::FrontEndDriver& driver() { return world_.session().front_end.Driver(); }
  [[nodiscard]] test::Random& random() { return world_.random(); }
  [[nodiscard]] forms::Form& Window(std::string_view name) { return *world_.application().FindForm(name); }

  SoakWorld& world_;
  int depth_ = 0;  // of modal windows
};

}  // namespace kestro::soak
