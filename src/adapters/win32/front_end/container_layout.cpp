#include "adapters/win32/front_end/container_layout.h"

#include <algorithm>

#include "forms/controls.h"

namespace kestro::adapters::win32 {
namespace {

using forms::Container;
using forms::ControlKind;

/// Distances in terms of the text's height, so that they grow with it.
int Around(Margins margins, int line) {
  switch (margins) {
    case Margins::kWindow:
      return line * 3 / 4;
    case Margins::kPage:
      return line * 2 / 3;
    case Margins::kNone:
      break;
  }
  return 0;
}

/// A control that can be higher than one line of text.
bool IsTall(const forms::Control& control) {
  if (const auto* label = dynamic_cast<const forms::Label*>(&control)) {
    return label->role() == forms::Label::Role::kValue;
  }
  if (const auto* box = dynamic_cast<const forms::TextBox*>(&control)) {
    return box->lines() == forms::TextBox::Lines::kMany;
  }
  const ControlKind kind = control.kind();
  return kind == ControlKind::kPicture || kind == ControlKind::kFrame || kind == ControlKind::kGrid;
}

bool IsCaption(const forms::Control& control) {
  const auto* label = dynamic_cast<const forms::Label*>(&control);
  return label != nullptr && label->role() == forms::Label::Role::kCaption;
}

}  // namespace

ContainerLayout::ContainerLayout(const Container& container, Margins margins, const Fonts& fonts,
                                 const ElementOf& element_of)
    : container_(container), gap_(fonts.normal.line() / 2), around_(Around(margins, fonts.normal.line())) {
  for (const Container::Placed& placed : container.placed()) {
    LayoutElement* element = element_of(*placed.control);
    if (element != nullptr && element->Shown()) items_.push_back({element, &placed, element->Measure()});
  }
}

Tracks ContainerLayout::Columns() const {
  std::vector<Need> needs;
  for (const Item& item : items_) {
    const forms::Cell& cell = item.placed->cell;
    needs.push_back(
        {cell.column, cell.column_span, item.hint.least_width, item.hint.width, item.hint.grows_wide});
  }
  return {needs, gap_, container_.growing_column()};
}

/// Texts are wrapped: how high a row is can depend on how wide the columns are.
Tracks ContainerLayout::Rows(const Tracks* filled_columns) const {
  std::vector<Need> needs;
  for (const Item& item : items_) {
    const forms::Cell& cell = item.placed->cell;
    int least = item.hint.least_height;
    int wanted = item.hint.height;
    if (filled_columns != nullptr) {
      const int width = filled_columns->PlaceOf(cell.column, cell.column_span).length;
      const bool shrinks = item.hint.grows_high && least < wanted;
      wanted = item.element->HeightFor(width);
      least = shrinks ? std::min(least, wanted) : wanted;
    }
    needs.push_back({cell.row, cell.row_span, least, wanted, item.hint.grows_high});
  }
  return {needs, gap_, container_.growing_row()};
}

SizeHint ContainerLayout::Measure() const {
  Tracks columns = Columns();
  columns.Fill(columns.wanted());
  const Tracks rows = Rows(&columns);
  const int air = 2 * around_;
  return {columns.least() + air, columns.wanted() + air, rows.least() + air,
          rows.wanted() + air,   columns.grows(),        rows.grows()};
}

int ContainerLayout::HeightFor(int width) const {
  Tracks columns = Columns();
  columns.Fill(width - 2 * around_);
  return Rows(&columns).wanted() + 2 * around_;
}

void ContainerLayout::Place(const RECT& place) const {
  Tracks columns = Columns();
  columns.Fill(place.right - place.left - 2 * around_);
  Tracks rows = Rows(&columns);
  rows.Fill(place.bottom - place.top - 2 * around_);
  for (const Item& item : items_) {
    const forms::Cell& cell = item.placed->cell;
    const auto [x, width] = columns.PlaceOf(cell.column, cell.column_span);
    const auto [y, height] = rows.PlaceOf(cell.row, cell.row_span);
    const LONG left = place.left + around_ + x;
    const LONG top = place.top + around_ + y;
    item.element->Place(PlaceInCell(item, {left, top, left + width, top + height}));
  }
}

bool ContainerLayout::InTallRow(const Container::Placed& placed) const {
  return std::any_of(items_.begin(), items_.end(), [&](const Item& other) {
    return other.placed->cell.row == placed.cell.row && IsTall(*other.placed->control);
  });
}

/// A control that cannot grow stands in the middle of its row; a caption at the first line of a tall
/// neighbour; a box goes round all its room; a button keeps its size where there is more than it needs.
RECT ContainerLayout::PlaceInCell(const Item& item, const RECT& cell) const {
  RECT place = cell;
  const Container::Placed& placed = *item.placed;
  const int width = place.right - place.left;
  const bool fills = item.hint.grows_high || placed.control->kind() == ControlKind::kFrame;
  if (!fills) {
    const int height = std::min<int>(item.element->HeightFor(width), cell.bottom - cell.top);
    const bool at_top = IsTall(*placed.control) || (IsCaption(*placed.control) && InTallRow(placed));
    if (!at_top) place.top += (cell.bottom - cell.top - height) / 2;
    place.bottom = place.top + height;
  }
  const bool in_wide_column =
      container_.growing_column() == placed.cell.column || placed.cell.column_span > 1;
  if (placed.control->kind() == ControlKind::kButton && in_wide_column) {
    place.left = std::max(place.left, place.right - item.hint.width);
  }
  return place;
}

}  // namespace kestro::adapters::win32
