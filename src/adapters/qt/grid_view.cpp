#include "adapters/qt/grid_view.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "adapters/qt/grid_cell_delegate.h"
#include "adapters/qt/qt_keys.h"
#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr int kPreferredRows = 10;
constexpr int kFewestRows = 4;
constexpr int kWidestGrid = 100;  // characters
constexpr int kFewestCharacters = 30;
constexpr int kNarrowestColumn = 4;  // characters
constexpr int kAroundText = 6;       // pixels above and below together

bool IsPlain(const QKeyEvent& event) {
  return (event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
}

}  // namespace

GridView::GridView(QWidget* parent, Events events) : QTableView(parent), events_(std::move(events)) {
  setItemDelegate(new GridCellDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  SetUpLook();
  SetUpHeaders();
  FitRowHeight();
}

void GridView::SetUpLook() {
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setTextElideMode(Qt::ElideRight);
  setVerticalScrollMode(ScrollPerPixel);  // the other mode leaves no room behind the last row
  setHorizontalScrollMode(ScrollPerPixel);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void GridView::SetUpHeaders() {
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  QHeaderView& header = *horizontalHeader();
  header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header.setHighlightSections(false);
  header.setSectionsClickable(true);
  header.setSortIndicatorShown(false);
  header.setStretchLastSection(true);
  header.setTextElideMode(Qt::ElideRight);
  header.setMinimumSectionSize(TextWidth(fontMetrics(), kNarrowestColumn));
  connect(&header, &QHeaderView::sectionClicked, this,
          [this](int column) { events_.header_pressed(column); });
}

void GridView::FitRowHeight() {
  const int height = fontMetrics().height() + kAroundText;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FitRowHeight();
}

// --- selection ---

int GridView::RowCount() const { return model() == nullptr ? 0 : model()->rowCount(); }

int GridView::SelectedRow() const {
  if (selectionModel() == nullptr || !selectionModel()->hasSelection()) return kNoRow;
  return selectionModel()->selection().first().top();
}

void GridView::ShowSelection(int row) {
  if (row == SelectedRow()) return;
  if (row == kNoRow) return selectionModel()->clear();
  selectionModel()->setCurrentIndex(model()->index(row, 0),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

// --- mouse and keyboard ---

void GridView::mousePressEvent(QMouseEvent* event) { PressAt(indexAt(event->position().toPoint()).row()); }

void GridView::PressAt(int row) {
  last_pressed_ = row;
  events_.pressed(row);
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  const int row = indexAt(event->position().toPoint()).row();
  const bool twice = row == last_pressed_ && event->button() == Qt::LeftButton;
  if (!twice) return PressAt(row);
  if (row != kNoRow && row == SelectedRow()) events_.double_clicked();
}

std::optional<int> GridView::MovedRow(int key) const {
  const int selected = SelectedRow();
  const int page = std::max(viewport()->height() / verticalHeader()->defaultSectionSize() - 1, 1);
  const int last = RowCount() - 1;
  if (last < 0) return std::nullopt;
  switch (key) {
    case Qt::Key_Up:
      return std::max(selected - 1, 0);
    case Qt::Key_Down:
      return std::min(selected + 1, last);
    case Qt::Key_PageUp:
      return std::max(selected - page, 0);
    case Qt::Key_PageDown:
      return std::min(selected + page, last);
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return last;
    default:
      return std::nullopt;
  }
}

bool GridView::IsOwnKey(const QKeyEvent& event) const {
  if (!IsPlain(event)) return false;
  return IsEnter(event) ? SelectedRow() != kNoRow : MovedRow(event.key()).has_value();
}

bool GridView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOwnKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  if (IsPlain(*event) && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): these scroll, in place of moving to another cell
    return QAbstractScrollArea::keyPressEvent(event);
  }
  if (!IsOwnKey(*event)) return event->ignore();
  if (IsEnter(*event)) {
    if (!event->isAutoRepeat()) events_.double_clicked();
  } else if (const auto row = MovedRow(event->key()); row != SelectedRow()) {
    events_.pressed(*row);
  }
}

// --- sizes and places ---

int GridView::HeightOfRows(int rows) const {
  return rows * verticalHeader()->defaultSectionSize() + horizontalHeader()->sizeHint().height() +
         2 * frameWidth();
}

QSize GridView::sizeHint() const {
  const int columns =
      horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
  return {std::min(columns, TextWidth(fontMetrics(), kWidestGrid)), HeightOfRows(kPreferredRows)};
}

QSize GridView::minimumSizeHint() const {
  return {TextWidth(fontMetrics(), kFewestCharacters), HeightOfRows(kFewestRows)};
}

/// Behind the last row there is always room to press beside the rows.
void GridView::updateGeometries() {
  QScrollBar& bar = *verticalScrollBar();
  const int place = bar.value();
  QTableView::updateGeometries();
  if (verticalHeader()->length() < viewport()->height()) return;
  bar.setMaximum(bar.maximum() + verticalHeader()->defaultSectionSize());
  bar.setValue(place);
}

QPoint GridView::BringIntoSight(int row) {
  if (row == kNoRow) {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    return {1, viewport()->height() - 1};
  }
  const QModelIndex index = model()->index(row, 0);
  scrollTo(index);
  return visualRect(index).center();
}

}  // namespace kestro::adapters
