#pragma once

#include <string>
#include <string_view>

#include "soak/soak_world.h"

namespace kestro::soak {

/// What a user does, at random: the tray icon and its menu, the windows on the
/// screen, keys. Whatever cannot be reached is tried all the same.
class UserSide {
 public:
  explicit UserSide(SoakWorld& world) : world_(world) {}

  /// One action.
  void Act();
  /// Some actions in a modal window, then closes it.
  void UseModal(forms::Form& window);
  /// Starts monitoring when it is off.
  void SwitchOn();
  void PressTray();
  /// Tries to end the application in one of the user's ways, or in the session's.
  void EndApplication();

 private:
  void ChooseFromTrayMenu();
  void UseWindow(forms::Form& form);
  void UseControl(forms::Form& form, forms::Control& control);
  void UseGrid(forms::Form& form, forms::Grid& grid);
  void UseComboBox(forms::Form& form, forms::ComboBox& combo);
  void FillIn(forms::Form& window);
  void PressKey(forms::Form& form);
  void Close(forms::Form& form);
  void Prepare(const forms::Control& control);
  [[nodiscard]] forms::Form* AnyWindow();
  [[nodiscard]] std::string AnyText(std::string_view control);
  void Click(forms::Form& form, forms::Control& control);

  [[nodiscard]] forms::FrontEndDriver& driver() { return world_.session().front_end.Driver(); }
  [[nodiscard]] test::Random& random() { return world_.random(); }
  [[nodiscard]] forms::Form& Window(std::string_view name) { return *world_.application().FindForm(name); }

  SoakWorld& world_;
  int depth_ = 0;  // of modal windows
};

}  // namespace kestro::soak
