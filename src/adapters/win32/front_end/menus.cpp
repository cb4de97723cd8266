#include "adapters/win32/front_end/menus.h"

#include <algorithm>

#include "adapters/win32/wide_text.h"
#include "forms/form.h"

namespace kestro::adapters::win32 {

using forms::MenuItem;

namespace {

void Empty(HMENU menu) {
  // RemoveMenu leaves the menus below alive: their entries own them.
  while (GetMenuItemCount(menu) > 0) RemoveMenu(menu, 0, MF_BYPOSITION);
}

std::wstring ShortcutText(const MenuItem& item) {
  return item.shortcut().empty() ? std::wstring() : L"\t" + ToWide(item.shortcut());
}

/// Place of a command in its menu, -1 when it is not there.
int PlaceOf(HMENU menu, int id) {
  const int count = menu == nullptr ? 0 : GetMenuItemCount(menu);
  for (int place = 0; place < count; ++place) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID;
    if (GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info) != 0 &&
        info.wID == static_cast<UINT>(id)) {
      return place;
    }
  }
  return -1;
}

/// What a menu shows of an entry; empty state for one that it does not hold.
struct Shown {
  std::wstring text;
  UINT state = 0;
  bool there = false;
};

Shown ShownIn(HMENU menu, int id) {
  const int place = PlaceOf(menu, id);
  if (place < 0) return {};
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info);
  std::wstring text(info.cch, L'\0');
  info.dwTypeData = text.data();
  ++info.cch;
  GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info);
  return {text, info.fState, true};
}

}  // namespace

Menus::Menus(const forms::Form& form, HWND window, BindingOwner& owner) : window_(window), owner_(owner) {
  for (forms::Control* control : form.controls()) {
    auto* item = dynamic_cast<MenuItem*>(control);
    if (item == nullptr || item->parent_item() != nullptr) continue;
    roots_.push_back(item);
    if (item->role() == MenuItem::Role::kBar && !bar_) bar_.reset(CreateMenu());
    Add(*item);
  }
  PopulateBar();
}

Menus::~Menus() {
  if (bar_) Empty(bar_.get());
  for (const auto& [control, entry] : entries_) {
    if (entry.menu) Empty(entry.menu.get());
  }
}

void Menus::Add(MenuItem& item) {
  Entry& entry = entries_[&item];
  entry.id = ++last_id_;
  entry.item = &item;
  entry.parent = item.parent_item();
  if (entry.parent == nullptr || !item.children().empty()) entry.menu.reset(CreatePopupMenu());
  for (MenuItem* child : item.children()) Add(*child);
  if (entries_.at(&item).menu) Populate(item);
}

void Menus::Insert(HMENU menu, const MenuItem& item) {
  const Entry& entry = At(item);
  std::wstring text = ToWide(item.caption()) + ShortcutText(item);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STATE;
  info.wID = static_cast<UINT>(entry.id);
  info.fState = (item.enabled() ? 0U : MFS_DISABLED) | (item.checked() ? MFS_CHECKED : 0U);
  if (item.role() == MenuItem::Role::kSeparator) {
    info.fType = MFT_SEPARATOR;
  } else {
    info.fMask |= MIIM_STRING;
    info.dwTypeData = text.data();
  }
  if (entry.menu) {
    info.fMask |= MIIM_SUBMENU;
    info.hSubMenu = entry.menu.get();
  }
  InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info);
}

void Menus::Populate(const MenuItem& parent) {
  const HMENU menu = Menu(parent);
  if (menu == nullptr) return;
  Empty(menu);
  for (const MenuItem* child : parent.children()) {
    if (child->visible()) Insert(menu, *child);
  }
}

void Menus::PopulateBar() {
  if (!bar_) return;
  Empty(bar_.get());
  for (const MenuItem* root : roots_) {
    if (root->role() == MenuItem::Role::kBar && root->visible()) Insert(bar_.get(), *root);
  }
  DrawMenuBar(window_);
}

bool Menus::Knows(const forms::Control& control) const { return entries_.contains(&control); }

void Menus::Sync(const MenuItem& item) {
  if (item.parent_item() != nullptr) {
    Populate(*item.parent_item());
  } else {
    PopulateBar();
  }
}

void Menus::Rebuild(const MenuItem& parent) {
  const std::vector<MenuItem*>& children = parent.children();
  if (Menu(parent) != nullptr) Empty(Menu(parent));
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    // Of a removed entry only the address is left.
    const bool gone = entry->second.parent == &parent &&
                      std::none_of(children.begin(), children.end(),
                                   [&](const MenuItem* child) { return child == entry->first; });
    entry = gone ? entries_.erase(entry) : std::next(entry);
  }
  for (MenuItem* child : children) {
    if (!Knows(*child)) Add(*child);
  }
  Populate(parent);
}

void Menus::Choose(int id) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const auto& entry) { return entry.second.id == id; });
  if (found == entries_.end()) return;
  MenuItem& item = *found->second.item;
  owner_.UserActed(item, [&item] { item.Click(); });
}

HMENU Menus::Holder(const MenuItem& item) const {
  const Entry& entry = At(item);
  if (entry.parent != nullptr) return Menu(*entry.parent);
  return item.role() == MenuItem::Role::kBar ? bar_.get() : nullptr;
}

bool Menus::Reachable(const MenuItem& item) const {
  for (const MenuItem* place = &item; place != nullptr; place = At(*place).parent) {
    const HMENU holder = Holder(*place);
    if (holder == nullptr) return place->Reachable();  // a pop-up menu itself is in no menu
    const Shown shown = ShownIn(holder, At(*place).id);
    if (!shown.there || (shown.state & MFS_DISABLED) != 0) return false;
  }
  return true;
}

forms::ControlReading Menus::Read(const MenuItem& item) const {
  forms::ControlReading reading;
  reading.name = ReadingName(item);
  const Shown shown = ShownIn(Holder(item), Command(item));
  // An entry that is out of its menu, or a pop-up menu, is nowhere to be read from.
  std::wstring text = shown.there ? shown.text : ToWide(item.caption());
  const std::wstring key = ShortcutText(item);
  if (shown.there && !key.empty() && text.ends_with(key)) text.resize(text.size() - key.size());
  if (item.role() != MenuItem::Role::kSeparator) reading.texts = {ToUtf8(text)};
  reading.checked = shown.there ? (shown.state & MFS_CHECKED) != 0 : item.checked();
  reading.disabled = shown.there ? (shown.state & MFS_DISABLED) != 0 : !item.enabled();
  reading.hidden = shown.there ? false : !item.visible();
  return reading;
}

}  // namespace kestro::adapters::win32
