#include "adapters/qt/qt_menus.h"

#include <algorithm>

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "adapters/qt/qt_keys.h"
#include "adapters/qt/qt_text.h"
#include "forms/form.h"

namespace kestro::adapters {

using forms::MenuItem;

namespace {

/// The key behind the caption, where the toolkit does not write it itself.
QString ShownKey(const MenuItem& item) {
  return IsEnterShortcut(item.shortcut()) ? QStringLiteral("\tEnter") : QString();
}

}  // namespace

QtMenus::QtMenus(const forms::Form& form, QWidget& window, BindingOwner& owner)
    : window_(window), owner_(owner) {
  for (const forms::Control* control : form.controls()) {
    const auto* item = dynamic_cast<const MenuItem*>(control);
    if (item == nullptr || item->parent_item() != nullptr) continue;
    roots_.push_back(item);
    if (item->role() == MenuItem::Role::kBar && bar_ == nullptr) bar_ = new QMenuBar(&window_);
    Add(*item);
  }
  PopulateBar();
}

void QtMenus::Add(const MenuItem& item) {
  Entry entry;
  entry.parent = item.parent_item();
  if (entry.parent == nullptr || !item.children().empty()) {
    entry.menu = new QMenu(&window_);
    entry.menu->setObjectName(ObjectName(item));
    entry.action = entry.menu->menuAction();
  } else {
    entry.action = new QAction(&window_);
    auto& model = const_cast<MenuItem&>(item);  // the form hands out its controls for operation
    QObject::connect(entry.action, &QAction::triggered, &window_,
                     [this, &model] { owner_.UserActed(model, [&model] { model.Click(); }); });
  }
  entry.action->setObjectName(ObjectName(item));
  entry.action->setMenuRole(QAction::NoRole);
  entry.action->setAutoRepeat(false);
  entry.action->setSeparator(item.role() == MenuItem::Role::kSeparator);
  entries_[&item] = entry;
  for (const MenuItem* child : item.children()) Add(*child);
  Show(item);
  if (entry.menu != nullptr) Populate(item);
}

void QtMenus::Remove(const Entry& entry) {
  // Its own click may be what removes it.
  entry.action->disconnect();
  if (entry.menu != nullptr) {
    entry.menu->deleteLater();
  } else {
    entry.action->deleteLater();
  }
}

void QtMenus::Populate(const MenuItem& parent) {
  QMenu& menu = *entries_.at(&parent).menu;
  for (QAction* action : menu.actions()) menu.removeAction(action);
  for (const MenuItem* child : parent.children()) {
    const Entry& entry = entries_.at(child);
    if (entry.shown) menu.addAction(entry.action);
  }
}

void QtMenus::PopulateBar() {
  if (bar_ == nullptr) return;
  for (QAction* action : bar_->actions()) bar_->removeAction(action);
  for (const MenuItem* root : roots_) {
    const Entry& entry = entries_.at(root);
    if (root->role() == MenuItem::Role::kBar && entry.shown) bar_->addAction(entry.action);
  }
}

QMenu* QtMenus::FirstPopup() const {
  const auto root = std::find_if(roots_.begin(), roots_.end(),
                                 [](const MenuItem* item) { return item->role() == MenuItem::Role::kPopup; });
  return root == roots_.end() ? nullptr : entries_.at(*root).menu;
}

QAction* QtMenus::EnterAction() const {
  for (const auto& [control, entry] : entries_) {
    const auto* item = dynamic_cast<const MenuItem*>(control);
    const MenuItem* root = item;
    while (root->parent_item() != nullptr) root = root->parent_item();
    const bool in_bar = root->role() == MenuItem::Role::kBar;
    if (in_bar && IsEnterShortcut(item->shortcut()) && Reachable(*item)) return entry.action;
  }
  return nullptr;
}

bool QtMenus::Knows(const forms::Control& control) const { return entries_.contains(&control); }

void QtMenus::Show(const MenuItem& item) {
  Entry& entry = entries_.at(&item);
  entry.shown = item.visible();
  entry.action->setText(ToQString(item.caption()) + ShownKey(item));
  entry.action->setEnabled(item.enabled());
  entry.action->setShortcut(ShortcutKeys(item.shortcut()));
  // Room for a check mark only where there is one.
  entry.action->setCheckable(item.checked());
  entry.action->setChecked(item.checked());
}

void QtMenus::Sync(const MenuItem& item) {
  const bool was_shown = entries_.at(&item).shown;
  Show(item);
  if (was_shown == item.visible()) return;
  if (item.parent_item() != nullptr) {
    Populate(*item.parent_item());
  } else {
    PopulateBar();
  }
}

void QtMenus::Rebuild(const MenuItem& parent) {
  const std::vector<MenuItem*>& children = parent.children();
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    // Of a removed entry only the address is left.
    const bool gone = entry->second.parent == &parent &&
                      std::none_of(children.begin(), children.end(),
                                   [&](const MenuItem* child) { return child == entry->first; });
    if (gone) Remove(entry->second);
    entry = gone ? entries_.erase(entry) : std::next(entry);
  }
  for (const MenuItem* child : children) {
    if (!Knows(*child)) Add(*child);
  }
  Populate(parent);
}

forms::ControlReading QtMenus::Read(const MenuItem& item) const {
  const Entry& entry = entries_.at(&item);
  forms::ControlReading reading;
  reading.name = ReadingName(item);
  if (!entry.action->isSeparator())
    reading.texts = {ToUtf8(entry.action->text().chopped(ShownKey(item).size()))};
  reading.checked = entry.action->isChecked();
  reading.disabled = !entry.action->isEnabled();
  reading.hidden = !entry.shown;
  return reading;
}

QAction& QtMenus::Action(const MenuItem& item) const { return *entries_.at(&item).action; }

QMenu* QtMenus::Menu(const MenuItem& item) const { return entries_.at(&item).menu; }

bool QtMenus::Reachable(const MenuItem& item) const {
  for (const MenuItem* place = &item; place != nullptr; place = entries_.at(place).parent) {
    const Entry& entry = entries_.at(place);
    if (!entry.shown || !entry.action->isEnabled()) return false;
  }
  return true;
}

}  // namespace kestro::adapters
