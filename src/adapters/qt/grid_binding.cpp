#include <QHeaderView>

#include "adapters/qt/bindings.h"
#include "adapters/qt/grid_rows_model.h"
#include "adapters/qt/grid_view.h"
#include "adapters/qt/qt_text.h"
#include "adapters/qt/screen_units.h"

namespace kestro::adapters {
namespace {

class GridBinding final : public ControlBinding {
 public:
  GridBinding(forms::Grid& grid, QWidget& parent, BindingOwner& owner)
      : ControlBinding(grid, owner), grid_(grid), view_(*new GridView(&parent, MakeEvents())), rows_(grid) {
    view_.setModel(&rows_);
    for (int i = 0; i < rows_.columnCount(); ++i) {
      const int width = ToPixels(grid.columns()[static_cast<std::size_t>(i)].width);
      if (width > 0) view_.horizontalHeader()->resizeSection(i, width);
    }
  }
  ~GridBinding() override { view_.setModel(nullptr); }
  GridBinding(const GridBinding&) = delete;
  GridBinding& operator=(const GridBinding&) = delete;

  [[nodiscard]] QWidget& widget() const override { return view_; }
  void Detach() override { rows_.Forget(); }

 private:
  GridView::Events MakeEvents() {
    return {[this](int row) { owner().UserActed(grid_, [this, row] { grid_.PressRow(row); }); },
            [this] { owner().UserActed(grid_, [this] { grid_.DoubleClick(); }); },
            [this](int column) { owner().UserActed(grid_, [this, column] { grid_.PressHeader(column); }); }};
  }
  void SyncContent() override {
    if (generation_ != grid_.generation()) {
      generation_ = grid_.generation();
      rows_.TakeRows();
      view_.scrollToTop();
    }
    rows_.TakeCaptions();
    const bool can_be_shown = grid_.selected_row() < rows_.rowCount();
    view_.ShowSelection(can_be_shown ? static_cast<int>(grid_.selected_row()) : GridView::kNoRow);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    for (int i = 0; i < rows_.columnCount(); ++i) {
      reading.texts.push_back(ToUtf8(rows_.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString()));
    }
    forms::GridReading& shown = reading.grid.emplace();
    shown.row_count = rows_.rowCount();
    shown.selected_row = view_.SelectedRow();
    for (int row = 0; row < std::min<std::int64_t>(shown.row_count, forms::GridReading::kMostRows); ++row) {
      auto& cells = shown.rows.emplace_back();
      for (int i = 0; i < rows_.columnCount(); ++i) {
        cells.push_back(ToUtf8(rows_.data(rows_.index(row, i)).toString()));
      }
    }
  }

  forms::Grid& grid_;
  GridView& view_;
  GridRowsModel rows_;
  std::int64_t generation_ = -1;  // of the rows that are shown
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Grid& grid, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<GridBinding>(grid, parent, owner);
}

}  // namespace kestro::adapters
