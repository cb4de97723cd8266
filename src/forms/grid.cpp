#include "forms/grid.h"

#include "base/runtime_error.h"

namespace kestro::forms {

void Grid::SetColumnCaption(int column, std::string_view caption) {
  Assign(columns_.at(static_cast<std::size_t>(column)).caption, std::string(caption));
}

void Grid::SetRows(const GridRows* rows) {
  rows_ = rows;
  Refresh();
}

void Grid::Refresh() {
  selected_row_ = kNoRow;
  ++generation_;
  Changed();
}

void Grid::SelectRow(std::int64_t row) {
  Assign(selected_row_, row >= 0 && row < row_count() ? row : kNoRow);
}

ToolBar::ToolBar(Form& form, Container* parent, std::string_view name, std::vector<std::string> pictures)
    : Control(form, parent, name) {
  for (std::string& picture : pictures) items_.push_back({std::move(picture), {}, true, true});
}

ToolBar::Item& ToolBar::Changeable(int number) {
  if (number < 1 || number > count()) base::RaiseSubscriptOutOfRange();
  return items_[static_cast<std::size_t>(number - 1)];
}

const ToolBar::Item& ToolBar::item(int number) const {
  if (number < 1 || number > count()) base::RaiseSubscriptOutOfRange();
  return items_[static_cast<std::size_t>(number - 1)];
}

bool ToolBar::CanPress(int number) const {
  if (number < 1 || number > count()) return false;
  const Item& button = item(number);
  return !button.picture.empty() && button.visible && button.enabled;
}

void ToolBar::SetToolTip(int number, std::string_view text) {
  Assign(Changeable(number).tool_tip, std::string(text));
}

void ToolBar::SetItemEnabled(int number, bool enabled) { Assign(Changeable(number).enabled, enabled); }

void ToolBar::SetItemVisible(int number, bool visible) { Assign(Changeable(number).visible, visible); }

}  // namespace kestro::forms
