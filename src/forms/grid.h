#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/control.h"

namespace kestro::forms {

/// Where a grid's cells come from. Asked for what is on the screen, again and
/// again; a million rows must cost nothing until they are looked at.
class GridRows {
 public:
  virtual ~GridRows() = default;
  [[nodiscard]] virtual std::int64_t RowCount() const = 0;
  /// Text of a cell; both indexes are inside the grid. Raises nothing: a cell
  /// that cannot be read is empty.
  [[nodiscard]] virtual std::string Cell(std::int64_t row, int column) const = 0;
};

/// A virtual table. At most one row is selected. The window's handlers decide
/// about the selection: a press only tells them where it was.
class Grid final : public Control {
 public:
  static constexpr std::int64_t kNoRow = -1;

  struct Column {
    std::string caption;
    std::string data_field;  // what a header click sorts by
    int width = 0;           // twips; the user can change it on the screen
  };

  Grid(Form& form, Container* parent, std::string_view name, std::vector<Column> columns)
      : Control(form, parent, name), columns_(std::move(columns)) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kGrid; }

  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
  void SetColumnCaption(int column, std::string_view caption);

  /// The rows must live until they are replaced; nullptr = none. The selection goes.
  void SetRows(const GridRows* rows);
  /// The rows are the same object with other contents; the selection goes.
  void Refresh();
  [[nodiscard]] std::int64_t row_count() const { return rows_ == nullptr ? 0 : rows_->RowCount(); }
  [[nodiscard]] std::string Cell(std::int64_t row, int column) const { return rows_->Cell(row, column); }
  /// Grows with every change of the rows: a front end drops what it kept of older ones.
  [[nodiscard]] std::int64_t generation() const { return generation_; }

  [[nodiscard]] std::int64_t selected_row() const { return selected_row_; }
  /// kNoRow clears; a row that is not there counts as kNoRow.
  void SelectRow(std::int64_t row);

  // --- from the front end ---
  /// A press (or the keyboard) on a row, or kNoRow beside them.
  void PressRow(std::int64_t row) {
    if (on_mouse_down) on_mouse_down(row);
  }
  void PressHeader(int column) {
    if (on_head_click) on_head_click(column);
  }
  /// Comes after PressRow. Enter on the selected row does the same.
  void DoubleClick() { Raise(on_double_click); }

  std::function<void(std::int64_t row)> on_mouse_down;
  std::function<void(int column)> on_head_click;
  Handler on_double_click;

 private:
  std::vector<Column> columns_;
  const GridRows* rows_ = nullptr;
  std::int64_t selected_row_ = kNoRow;
  std::int64_t generation_ = 0;
};

/// A row of buttons with pictures, numbered from 1. A button without a picture
/// is a gap that cannot be pressed.
class ToolBar final : public Control {
 public:
  struct Item {
    std::string picture;  // name of a tool picture ("new", "edit", "delete", "call", "web"); empty = a gap
    std::string tool_tip;
    bool enabled = true;
    bool visible = true;
  };

  ToolBar(Form& form, Container* parent, std::string_view name, std::vector<std::string> pictures);
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kToolBar; }
  [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
  /// Raises 9 outside 1 .. count().
  [[nodiscard]] const Item& item(int number) const;
  /// Inside 1 .. count(), no gap, shown and enabled.
  [[nodiscard]] bool CanPress(int number) const;
  void SetToolTip(int number, std::string_view text);
  void SetItemEnabled(int number, bool enabled);
  void SetItemVisible(int number, bool visible);
  void Press(int number) {
    if (on_button_click) on_button_click(number);
  }

  std::function<void(int number)> on_button_click;

 private:
  [[nodiscard]] Item& Changeable(int number);

  std::vector<Item> items_;
};

}  // namespace kestro::forms
