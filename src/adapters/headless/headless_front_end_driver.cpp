#include "adapters/headless/headless_front_end_driver.h"

#include <algorithm>

#include "adapters/headless/headless_keyboard.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

using forms::Control;
using forms::ControlKind;
using forms::ControlReading;

std::string ReadingName(const Control& control) {
  if (!control.array_index()) return control.name();
  return control.name() + "(" + std::to_string(*control.array_index()) + ")";
}

void ReadTabPages(const forms::TabPages& pages, ControlReading& reading) {
  for (int index = 0; index < pages.page_count(); ++index)
    reading.texts.push_back(pages.page(index).caption());
  reading.index = pages.tab();
}

void ReadComboBox(const forms::ComboBox& combo, ControlReading& reading) {
  reading.texts = combo.items();
  reading.index = combo.list_index();
  if (combo.style() == forms::ComboBox::Style::kEditable) reading.typed = combo.text();
}

void ReadGrid(const forms::Grid& grid, ControlReading& reading) {
  for (const auto& column : grid.columns()) reading.texts.push_back(column.caption);
  forms::GridReading& shown = reading.grid.emplace();
  shown.row_count = grid.row_count();
  shown.selected_row = grid.selected_row();
  for (std::int64_t row = 0; row < std::min(shown.row_count, forms::GridReading::kMostRows); ++row) {
    auto& cells = shown.rows.emplace_back();
    for (int column = 0; column < static_cast<int>(grid.columns().size()); ++column) {
      cells.push_back(grid.Cell(row, column));
    }
  }
}

void ReadToolBar(const forms::ToolBar& bar, ControlReading& reading) {
  for (int number = 1; number <= bar.count(); ++number) {
    const forms::ToolBar::Item& item = bar.item(number);
    const bool gap = item.picture.empty();
    reading.texts.push_back(gap ? std::string() : item.tool_tip);
    if (!item.visible) {
      reading.hidden_buttons.push_back(number);
    } else if (!gap && !item.enabled) {
      reading.disabled_buttons.push_back(number);
    }
  }
}

/// What the control shows by its kind.
void ReadContent(const Control& control, ControlReading& reading) {
  switch (control.kind()) {
    case ControlKind::kTextBox:
      reading.texts = {dynamic_cast<const forms::TextBox&>(control).text()};
      break;
    case ControlKind::kComboBox:
      ReadComboBox(dynamic_cast<const forms::ComboBox&>(control), reading);
      break;
    case ControlKind::kGrid:
      ReadGrid(dynamic_cast<const forms::Grid&>(control), reading);
      break;
    case ControlKind::kToolBar:
      ReadToolBar(dynamic_cast<const forms::ToolBar&>(control), reading);
      break;
    case ControlKind::kTabPages:
      ReadTabPages(dynamic_cast<const forms::TabPages&>(control), reading);
      break;
    case ControlKind::kPicture:
      reading.picture = dynamic_cast<const forms::Picture&>(control).file();
      break;
    case ControlKind::kProgressBar: {
      const auto& bar = dynamic_cast<const forms::ProgressBar&>(control);
      reading.progress = {bar.value(), bar.maximum()};
      break;
    }
    case ControlKind::kCheckBox:
      reading.checked = dynamic_cast<const forms::CheckBox&>(control).value() != 0;
      reading.texts = {dynamic_cast<const forms::CheckBox&>(control).caption()};
      break;
    case ControlKind::kMenuItem: {
      const auto& item = dynamic_cast<const forms::MenuItem&>(control);
      reading.checked = item.checked();
      if (item.role() != forms::MenuItem::Role::kSeparator) reading.texts = {item.caption()};
      break;
    }
    case ControlKind::kLabel:
    case ControlKind::kButton:
    case ControlKind::kFrame:
      reading.texts = {dynamic_cast<const forms::CaptionedControl&>(control).caption()};
      break;
  }
}

/// What of a typed text fits; a limit of 0 is none.
std::string_view WithinLimit(std::string_view text, int limit) {
  return limit > 0 ? base::FirstCharacters(text, static_cast<std::size_t>(limit)) : text;
}

}  // namespace

bool HeadlessFrontEndDriver::WindowReachable(const forms::Form& form) const {
  if (!form.loaded()) return false;
  if (form.name() == tray_window_) return true;
  const forms::Form* modal = host_.modal_window();
  return form.visible() && (modal == nullptr || modal == &form);
}

bool HeadlessFrontEndDriver::Reachable(const forms::Form& form, const Control& control) const {
  return WindowReachable(form) && control.Reachable();
}

bool HeadlessFrontEndDriver::Click(forms::Form& form, Control& control) {
  if (!Reachable(form, control)) return false;
  if (auto* item = dynamic_cast<forms::MenuItem*>(&control)) {
    if (item->role() != forms::MenuItem::Role::kEntry || !item->children().empty()) return false;
    item->Click();
    return true;
  }
  auto* button = dynamic_cast<forms::Button*>(&control);
  auto* box = dynamic_cast<forms::CheckBox*>(&control);
  if (button == nullptr && box == nullptr) return false;
  host_.FocusControl(form, control);
  if (button != nullptr) button->Click();
  if (box != nullptr) box->SetValue(box->value() == 0 ? 1 : 0);
  return true;
}

bool HeadlessFrontEndDriver::Type(forms::Form& form, Control& control, std::string_view text) {
  if (!Reachable(form, control) || !TakesText(control)) return false;
  host_.FocusControl(form, control);
  if (auto* box = dynamic_cast<forms::TextBox*>(&control)) {
    box->SetText(WithinLimit(text, box->max_length()));
  } else if (auto* combo = dynamic_cast<forms::ComboBox*>(&control)) {
    combo->SetText(WithinLimit(text, combo->max_length()));
  }
  return true;
}

bool HeadlessFrontEndDriver::Choose(forms::Form& form, Control& control, int index) {
  if (!Reachable(form, control) || index < 0) return false;
  if (auto* combo = dynamic_cast<forms::ComboBox*>(&control)) {
    if (index >= static_cast<int>(combo->items().size())) return false;
    host_.FocusControl(form, control);
    combo->SetListIndex(index);
    return true;
  }
  auto* pages = dynamic_cast<forms::TabPages*>(&control);
  if (pages == nullptr || index >= pages->page_count()) return false;
  pages->SetTab(index);
  return true;
}

bool HeadlessFrontEndDriver::Check(forms::Form& form, forms::CheckBox& control, bool checked) {
  if (!Reachable(form, control)) return false;
  host_.FocusControl(form, control);
  if ((control.value() != 0) != checked) control.SetValue(checked ? 1 : 0);
  return true;
}

bool HeadlessFrontEndDriver::PressRow(forms::Form& form, forms::Grid& grid, std::int64_t row) {
  if (!Reachable(form, grid) || row < forms::Grid::kNoRow || row >= grid.row_count()) return false;
  host_.FocusControl(form, grid);
  grid.PressRow(row);
  return true;
}

bool HeadlessFrontEndDriver::DoubleClickRow(forms::Form& form, forms::Grid& grid, std::int64_t row) {
  if (!PressRow(form, grid, row)) return false;
  const bool on_selected_row = row != forms::Grid::kNoRow && grid.selected_row() == row;
  if (on_selected_row && Reachable(form, grid)) grid.DoubleClick();
  return true;
}

bool HeadlessFrontEndDriver::PressHeader(forms::Form& form, forms::Grid& grid, int column) {
  const bool there = column >= 0 && column < static_cast<int>(grid.columns().size());
  if (!there || !Reachable(form, grid)) return false;
  host_.FocusControl(form, grid);
  grid.PressHeader(column);
  return true;
}

bool HeadlessFrontEndDriver::PressTool(forms::Form& form, forms::ToolBar& bar, int number) {
  if (!Reachable(form, bar) || !bar.CanPress(number)) return false;
  bar.Press(number);
  return true;
}

bool HeadlessFrontEndDriver::PressKey(forms::Form& form, const forms::Key& key) {
  if (!WindowReachable(form) || !form.visible()) return false;
  host_.BringToFront(form);
  PressKeyIn(form, host_.Focus(form), key);
  return true;
}

void HeadlessFrontEndDriver::Close(forms::Form& form, int unload_mode) {
  const bool by_its_button = unload_mode == forms::kControlMenu;
  if (by_its_button && (!WindowReachable(form) || !form.visible())) return;
  form.RequestUnload(unload_mode);
}

forms::WindowReading HeadlessFrontEndDriver::Read(forms::Form& form) {
  forms::WindowReading reading{form.caption(), form.visible(), form.window_state(), {}};
  for (const Control* control : form.controls()) {
    ControlReading& entry = reading.controls.emplace_back();
    entry.name = ReadingName(*control);
    ReadContent(*control, entry);
    entry.hidden = !control->visible();
    entry.disabled = !control->enabled();
    entry.focus = host_.Focus(form) == control;
  }
  return reading;
}

}  // namespace kestro::adapters
