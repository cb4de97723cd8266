#pragma once

#include <map>

#include "adapters/qt/control_binding.h"
#include "forms/controls.h"

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

namespace kestro::adapters {

/// The menus of one window: its menu bar and its pop-up menus. Entries that the
/// program hides are taken out of their menu.
class QtMenus {
 public:
  /// The widgets belong to `window`, which must outlive this object.
  QtMenus(const forms::Form& form, QWidget& window, BindingOwner& owner);

  /// nullptr when the window has no menu bar.
  [[nodiscard]] QMenuBar* bar() const { return bar_; }
  /// The entry of the menu bar that Enter chooses, nullptr when there is none in reach.
  [[nodiscard]] QAction* EnterAction() const;
  /// The first pop-up menu, nullptr when there is none.
  [[nodiscard]] QMenu* FirstPopup() const;

  [[nodiscard]] bool Knows(const forms::Control& control) const;
  /// Brings a known entry in step with the model.
  void Sync(const forms::MenuItem& item);
  /// Entries were added to or removed from the menu below `parent`.
  void Rebuild(const forms::MenuItem& parent);

  /// For known entries.
  [[nodiscard]] forms::ControlReading Read(const forms::MenuItem& item) const;
  [[nodiscard]] QAction& Action(const forms::MenuItem& item) const;
  /// nullptr when nothing lies below the entry.
  [[nodiscard]] QMenu* Menu(const forms::MenuItem& item) const;
  /// Shown and enabled, and so is everything above it.
  [[nodiscard]] bool Reachable(const forms::MenuItem& item) const;

 private:
  struct Entry {
    QAction* action = nullptr;
    QMenu* menu = nullptr;
    const forms::MenuItem* parent = nullptr;
    bool shown = true;
  };

  void Add(const forms::MenuItem& item);
  static void Remove(const Entry& entry);
  void Populate(const forms::MenuItem& parent);
  void PopulateBar();
  void Show(const forms::MenuItem& item);

  QWidget& window_;
  BindingOwner& owner_;
  QMenuBar* bar_ = nullptr;
  std::vector<const forms::MenuItem*> roots_;
  std::map<const forms::Control*, Entry> entries_;
};

}  // namespace kestro::adapters
