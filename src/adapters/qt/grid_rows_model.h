#pragma once

#include <QAbstractTableModel>

#include "forms/grid.h"

namespace kestro::adapters {

/// Hands the cells of a grid to a view, each when it is asked for; keeps none.
class GridRowsModel final : public QAbstractTableModel {
 public:
  /// More rows than a view can place; further ones are not shown.
  static constexpr int kMostRows = 20'000'000;

  explicit GridRowsModel(const forms::Grid& grid) : grid_(&grid) {}

  /// The grid has other rows now.
  void TakeRows();
  /// The grid has other column captions now.
  void TakeCaptions();
  /// The grid is going: it is not asked any more, and nothing is shown.
  void Forget();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const forms::Grid* grid_;
  int row_count_ = 0;  // as the view knows it
};

}  // namespace kestro::adapters
