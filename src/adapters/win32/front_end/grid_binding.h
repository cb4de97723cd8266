#pragma once

#include <optional>

#include "adapters/win32/front_end/control_binding.h"

namespace kestro::adapters::win32 {

/// A virtual list view of whole rows that selects nothing by itself: it says what
/// the user did, and shows the selection that the grid has.
class GridBinding final : public ControlBinding {
 public:
  GridBinding(forms::Grid& grid, HWND parent, BindingOwner& owner);
  ~GridBinding() override = default;

  [[nodiscard]] SizeHint Measure() const override;
  [[nodiscard]] int HeightFor(int /*width*/) const override { return Measure().height; }
  void Place(const RECT& place) override;
  void UseFonts() override;
  void Detach() override;
  LRESULT OnNotify(NMHDR& header) override;

  /// Enter on the selected row, or a movement; a key that is for the grid alone.
  [[nodiscard]] bool UsesKey(WPARAM key) const;

  [[nodiscard]] std::int64_t RowCount() const { return Send(LVM_GETITEMCOUNT); }
  [[nodiscard]] std::int64_t SelectedRow() const {
    return Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
  }
  [[nodiscard]] HWND header() const { return reinterpret_cast<HWND>(Send(LVM_GETHEADER)); }
  [[nodiscard]] int ColumnCount() const;
  /// Brings a row, or the place beside the rows, into sight; a point of it, or
  /// nothing where there is none.
  [[nodiscard]] std::optional<POINT> BringIntoSight(std::int64_t row);
  /// Brings a column into sight; a point of its header, in the header.
  [[nodiscard]] POINT HeaderPoint(int column);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                    DWORD_PTR data) noexcept;
  /// True when the message is done with.
  bool Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void PressKey(WPARAM key, bool repeated);
  void PressAt(std::int64_t row);
  void DoubleClickAt(std::int64_t row, bool left_button);
  [[nodiscard]] std::int64_t RowAt(LPARAM point) const;
  /// Where a movement key leads to.
  [[nodiscard]] std::optional<std::int64_t> MovedRow(WPARAM key) const;

  void TellCell(LVITEMW& item);
  [[nodiscard]] std::wstring CellText(std::int64_t row, int column) const;
  void AddColumns();
  void SetRowHeight();
  void SetCaption(int column, std::wstring caption);
  [[nodiscard]] std::wstring Caption(int column) const;
  void FitLastColumn();
  [[nodiscard]] int RowHeight() const;
  [[nodiscard]] int HeaderHeight() const;
  void ShowSelection();
  void SyncContent() override;
  void ReadContent(forms::ControlReading& reading) const override;

  forms::Grid& grid_;
  OwnedImageList row_height_;
  bool detached_ = false;
  std::int64_t generation_ = -1;  // of the rows that are shown
  std::int64_t last_pressed_ = forms::Grid::kNoRow;
  mutable bool reading_ = false;  // cells are asked for as they are, not for the screen
  mutable std::wstring cell_;     // the last one that was told
};

}  // namespace kestro::adapters::win32
