#include "adapters/qt/grid_cell_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr qsizetype kMostShown = 500;  // characters of one cell that are looked at for drawing
constexpr qsizetype kMostInToolTip = 2000;

}  // namespace

QString GridCellDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const {
  QString text = value.toString().left(kMostShown);
  for (QChar& character : text) {
    if (character.isSpace()) character = QLatin1Char(' ');
  }
  return text;
}

void GridCellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state.setFlag(QStyle::State_HasFocus, false);  // rows are chosen, not cells
}

bool GridCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const bool cut = index.isValid() && sizeHint(option, index).width() > view->visualRect(index).width();
  const QString text = cut ? index.data().toString().left(kMostInToolTip) : QString();
  QToolTip::showText(event->globalPos(), AsToolTip(text), view);
  return true;
}

}  // namespace kestro::adapters
