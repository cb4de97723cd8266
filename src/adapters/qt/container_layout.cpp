#include "adapters/qt/container_layout.h"

#include <algorithm>

#include <QGridLayout>
#include <QWidget>

#include "forms/controls.h"

namespace kestro::adapters {
namespace {

using forms::Container;
using forms::ControlKind;

/// Distances in terms of the text's height, so that they grow with it.
struct Distances {
  explicit Distances(const QWidget& widget) : line(widget.fontMetrics().height()) {}
  int line;
  [[nodiscard]] int Between() const { return line / 2; }
  [[nodiscard]] int AroundWindow() const { return line; }
  [[nodiscard]] int AroundPage() const { return line * 3 / 4; }
};

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

/// A caption stands at the first line of a tall neighbour, else in the middle of its row.
Qt::Alignment AlignmentOf(const Container& container, const Container::Placed& placed) {
  const auto* label = dynamic_cast<const forms::Label*>(placed.control);
  if (label != nullptr && label->role() == forms::Label::Role::kCaption) {
    const auto& all = container.placed();
    const bool tall_row = std::any_of(all.begin(), all.end(), [&](const Container::Placed& other) {
      return other.cell.row == placed.cell.row && IsTall(*other.control);
    });
    return tall_row ? Qt::AlignTop : Qt::AlignVCenter;
  }
  // A button keeps its size where there is more room than it needs.
  const bool in_wide_column = container.growing_column() == placed.cell.column || placed.cell.column_span > 1;
  if (placed.control->kind() == ControlKind::kButton && in_wide_column) return Qt::AlignRight;
  return {};
}

void SetMargins(QGridLayout& grid, const QWidget& holder, Margins margins) {
  const Distances distances(holder);
  grid.setHorizontalSpacing(distances.Between());
  grid.setVerticalSpacing(distances.Between());
  const int around = margins == Margins::kWindow ? distances.AroundWindow()
                     : margins == Margins::kPage ? distances.AroundPage()
                                                 : 0;
  grid.setContentsMargins(around, around, around, around);
}

/// Without a row or column that is to grow, the room left over goes behind the last one.
void SetGrowth(QGridLayout& grid, const Container& container) {
  const Qt::Orientations expanding = grid.expandingDirections();
  if (container.growing_row()) {
    grid.setRowStretch(*container.growing_row(), 1);
  } else if (!expanding.testFlag(Qt::Vertical)) {
    grid.setRowStretch(grid.rowCount(), 1);
  }
  if (container.growing_column()) {
    grid.setColumnStretch(*container.growing_column(), 1);
  } else if (!expanding.testFlag(Qt::Horizontal)) {
    grid.setColumnStretch(grid.columnCount(), 1);
  }
}

}  // namespace

void LayOutContainer(const Container& container, QWidget& holder, Margins margins,
                     const WidgetOf& widget_of) {
  auto* grid = new QGridLayout(&holder);
  SetMargins(*grid, holder, margins);
  for (const Container::Placed& placed : container.placed()) {
    QWidget* widget = widget_of(*placed.control);
    if (widget == nullptr) continue;
    const forms::Cell& cell = placed.cell;
    grid->addWidget(widget, cell.row, cell.column, cell.row_span, cell.column_span,
                    AlignmentOf(container, placed));
  }
  SetGrowth(*grid, container);
}

}  // namespace kestro::adapters
