#pragma once

#include <functional>
#include <optional>

#include <QTableView>

namespace kestro::adapters {

/// A table of whole rows that selects nothing by itself: it says what the user
/// did, and shows the selection it is told.
class GridView final : public QTableView {
 public:
  static constexpr int kNoRow = -1;

  struct Events {
    /// A mouse button on a row or beside the rows (kNoRow), or the keyboard moved to a row.
    std::function<void(int row)> pressed;
    /// A double click or Enter on the selected row.
    std::function<void()> double_clicked;
    std::function<void(int column)> header_pressed;
  };

  GridView(QWidget* parent, Events events);

  void ShowSelection(int row);
  [[nodiscard]] int SelectedRow() const;

  /// Brings a row, or the place beside the rows, into sight; a point of it in the viewport.
  [[nodiscard]] QPoint BringIntoSight(int row);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  // Would look through all rows.
  void keyboardSearch(const QString& /*text*/) override {}

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* /*event*/) override {}
  void mouseReleaseEvent(QMouseEvent* /*event*/) override {}
  void changeEvent(QEvent* event) override;
  void updateGeometries() override;
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& /*index*/,
                                                                     const QEvent* /*event*/) const override {
    return QItemSelectionModel::NoUpdate;
  }

 private:
  void SetUpLook();
  void SetUpHeaders();
  void FitRowHeight();
  [[nodiscard]] int RowCount() const;
  [[nodiscard]] int HeightOfRows(int rows) const;
  /// Where a movement key leads to.
  [[nodiscard]] std::optional<int> MovedRow(int key) const;
  /// Enter on the selected row, or a movement; a key that is for the grid alone.
  [[nodiscard]] bool IsOwnKey(const QKeyEvent& event) const;
  void PressAt(int row);

  Events events_;
  int last_pressed_ = kNoRow;
};

}  // namespace kestro::adapters
