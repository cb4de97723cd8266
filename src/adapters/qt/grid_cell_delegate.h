#pragma once

#include <QStyledItemDelegate>

namespace kestro::adapters {

/// Draws cells of whole rows: each on one line, cut at its end, in full as a tool tip.
class GridCellDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace kestro::adapters
