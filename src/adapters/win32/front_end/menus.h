#pragma once

#include <map>
#include <string>
#include <vector>

#include "adapters/win32/front_end/control_binding.h"

namespace kestro::adapters::win32 {

/// The menus of one window: its menu bar and its pop-up menus. Entries that the
/// program hides are taken out of their menu.
class Menus {
 public:
  /// `window` carries the bar; it must drop it (SetMenu) before this object goes.
  Menus(const forms::Form& form, HWND window, BindingOwner& owner);
  ~Menus();
  Menus(const Menus&) = delete;
  Menus& operator=(const Menus&) = delete;

  /// nullptr when the window has no menu bar.
  [[nodiscard]] HMENU bar() const { return bar_.get(); }
  [[nodiscard]] bool Knows(const forms::Control& control) const;
  /// Brings a known entry in step with the model.
  void Sync(const forms::MenuItem& item);
  /// Entries were added to or removed from the menu below `parent`.
  void Rebuild(const forms::MenuItem& parent);
  /// The user has chosen the entry of that command number.
  void Choose(int id);

  // --- for known entries ---
  [[nodiscard]] forms::ControlReading Read(const forms::MenuItem& item) const;
  [[nodiscard]] int Command(const forms::MenuItem& item) const { return At(item).id; }
  /// nullptr when nothing lies below the entry.
  [[nodiscard]] HMENU Menu(const forms::MenuItem& item) const { return At(item).menu.get(); }
  /// In its menu and not disabled, and so is everything above it.
  [[nodiscard]] bool Reachable(const forms::MenuItem& item) const;

 private:
  struct Entry {
    int id = 0;
    OwnedMenu menu;
    forms::MenuItem* item = nullptr;
    const forms::MenuItem* parent = nullptr;
  };

  [[nodiscard]] const Entry& At(const forms::MenuItem& item) const { return entries_.at(&item); }
  void Add(forms::MenuItem& item);
  void Populate(const forms::MenuItem& parent);
  void PopulateBar();
  void Insert(HMENU menu, const forms::MenuItem& item);
  /// The menu that holds the entry; nullptr for a pop-up menu.
  [[nodiscard]] HMENU Holder(const forms::MenuItem& item) const;

  HWND window_;
  BindingOwner& owner_;
  int last_id_ = 0;
  OwnedMenu bar_;
  std::vector<const forms::MenuItem*> roots_;
  std::map<const forms::Control*, Entry> entries_;
};

}  // namespace kestro::adapters::win32
