#include "adapters/qt/grid_rows_model.h"

#include <algorithm>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {

void GridRowsModel::TakeRows() {
  beginResetModel();
  row_count_ = static_cast<int>(std::min<std::int64_t>(grid_->row_count(), kMostRows));
  endResetModel();
}

void GridRowsModel::TakeCaptions() {
  if (columnCount() > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void GridRowsModel::Forget() {
  beginResetModel();
  grid_ = nullptr;
  row_count_ = 0;
  endResetModel();
}

int GridRowsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : row_count_; }

int GridRowsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || grid_ == nullptr ? 0 : static_cast<int>(grid_->columns().size());
}

QVariant GridRowsModel::data(const QModelIndex& index, int role) const {
  // The rows may have become fewer without the grid having told yet.
  const bool there = index.isValid() && grid_ != nullptr && index.row() < grid_->row_count();
  if (role != Qt::DisplayRole || !there) return {};
  return ToQString(grid_->Cell(index.row(), index.column()));
}

QVariant GridRowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section >= columnCount()) return {};
  return ToQString(grid_->columns()[static_cast<std::size_t>(section)].caption);
}

}  // namespace kestro::adapters
