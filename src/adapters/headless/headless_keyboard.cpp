#include "adapters/headless/headless_keyboard.h"

#include <algorithm>

#include "forms/grid.h"

namespace kestro::adapters {
namespace {

using forms::Button;
using forms::Control;
using forms::Form;
using forms::Key;
using forms::MenuItem;

constexpr std::string_view kEnter = "Enter";

bool IsEnter(const Key& key) { return key.plain() && key.name == kEnter; }

/// Keys that a text field needs to edit its text.
bool EditsText(const Key& key) {
  static constexpr std::string_view kClipboardAndUndo = "ACVXZY";
  if (key.alt) return false;
  if (key.name == "Del" || key.name == "Home" || key.name == "End") return true;
  return key.control && key.name.size() == 1 && kClipboardAndUndo.find(key.name) != std::string_view::npos;
}

bool UseInTextBox(forms::TextBox& box, const Key& key) {
  if (box.read_only()) return false;
  const bool many_lines = box.lines() == forms::TextBox::Lines::kMany;
  if (many_lines && IsEnter(key)) {
    box.SetText(box.text() + "\r\n");
    return true;
  }
  return EditsText(key) || (many_lines && (key.name == "Up" || key.name == "Down"));
}

/// Where an arrow, Home or End leads from a place in `count` places; nothing for another key.
std::optional<std::int64_t> MovedPlace(std::int64_t place, std::int64_t count, const Key& key) {
  if (!key.plain() || count == 0) return std::nullopt;
  if (key.name == "Up") return std::max<std::int64_t>(place - 1, 0);
  if (key.name == "Down") return std::min(place + 1, count - 1);
  if (key.name == "Home") return 0;
  if (key.name == "End") return count - 1;
  return std::nullopt;
}

bool UseInComboBox(forms::ComboBox& combo, const Key& key) {
  if (TakesText(combo) && EditsText(key)) return true;
  const auto index = MovedPlace(combo.list_index(), static_cast<std::int64_t>(combo.items().size()), key);
  if (index) combo.SetListIndex(static_cast<int>(*index));
  return index.has_value();
}

bool UseInGrid(forms::Grid& grid, const Key& key) {
  if (IsEnter(key) && grid.selected_row() != forms::Grid::kNoRow) {
    grid.DoubleClick();
    return true;
  }
  const auto row = MovedPlace(grid.selected_row(), grid.row_count(), key);
  if (row && *row != grid.selected_row()) grid.PressRow(*row);
  return row.has_value();
}

/// The control that has the keyboard uses the key itself.
bool Use(Control* control, const Key& key) {
  if (auto* box = dynamic_cast<forms::TextBox*>(control)) return UseInTextBox(*box, key);
  if (auto* combo = dynamic_cast<forms::ComboBox*>(control)) return UseInComboBox(*combo, key);
  if (auto* grid = dynamic_cast<forms::Grid*>(control)) return UseInGrid(*grid, key);
  auto* button = dynamic_cast<Button*>(control);
  if (button == nullptr || !IsEnter(key)) return false;
  button->Click();
  return true;
}

bool PressButton(const Form& form, Button::Role role) {
  for (Control* control : form.controls()) {
    auto* button = dynamic_cast<Button*>(control);
    if (button == nullptr || button->role() != role || !button->Reachable()) continue;
    button->Click();
    return true;
  }
  return false;
}

bool InMenuBar(const MenuItem& item) {
  const MenuItem* root = &item;
  while (root->parent_item() != nullptr) root = root->parent_item();
  return root->role() == MenuItem::Role::kBar;
}

bool RunShortcut(const Form& form, const Key& key) {
  for (Control* control : form.controls()) {
    auto* item = dynamic_cast<MenuItem*>(control);
    if (item == nullptr || item->shortcut().empty() || forms::ParseKey(item->shortcut()) != key) continue;
    if (!InMenuBar(*item) || !item->Reachable()) continue;
    item->Click();
    return true;
  }
  const auto& shortcuts = form.shortcuts();
  const auto found = std::find_if(shortcuts.begin(), shortcuts.end(),
                                  [&](const auto& shortcut) { return forms::ParseKey(shortcut.key) == key; });
  if (found == shortcuts.end()) return false;
  if (found->handler) found->handler();
  return true;
}

}  // namespace

bool TakesText(const Control& control) {
  if (const auto* box = dynamic_cast<const forms::TextBox*>(&control)) return !box->read_only();
  const auto* combo = dynamic_cast<const forms::ComboBox*>(&control);
  return combo != nullptr && combo->style() == forms::ComboBox::Style::kEditable;
}

void PressKeyIn(Form& form, Control* focus, const Key& key) {
  if (Use(focus, key)) return;
  const bool in_grid = focus != nullptr && focus->kind() == forms::ControlKind::kGrid;
  if (IsEnter(key) && !in_grid && PressButton(form, Button::Role::kDefault)) return;
  if (RunShortcut(form, key) || !key.plain()) return;
  if (key.name == kEnter) {
    PressButton(form, Button::Role::kDefault);
  } else if (key.name == "Esc") {
    PressButton(form, Button::Role::kCancel);
  }
}

}  // namespace kestro::adapters
