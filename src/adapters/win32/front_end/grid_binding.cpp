#include "adapters/win32/front_end/grid_binding.h"

#include <algorithm>
#include <cwctype>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/wide_text.h"
#include "base/scope_value.h"

namespace kestro::adapters::win32 {
namespace {

using forms::Grid;

constexpr std::int64_t kMostRows = 100'000'000;  // the native control has no more
constexpr int kPreferredRows = 10;
constexpr int kFewestRows = 4;
constexpr int kWidestGrid = 100;  // characters
constexpr int kFewestCharacters = 30;
constexpr int kAroundText = 5;           // pixels above and below together, of a plain screen
constexpr std::size_t kMostShown = 500;  // characters of one cell that are looked at for drawing
constexpr std::size_t kLongestRead = 65536;
constexpr int kLongestCaption = 260;

}  // namespace

GridBinding::GridBinding(Grid& grid, HWND parent, BindingOwner& owner)
    : ControlBinding(grid, owner), grid_(grid) {
  Create(parent, WC_LISTVIEWW,
         WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
         WS_EX_CLIENTEDGE);
  SetWindowSubclass(window(), &GridBinding::Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  constexpr LPARAM kLook = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kLook, kLook);
  AddColumns();
  SetRowHeight();
}

/// The system makes rows as high as their pictures, if they have any: there is one without contents.
void GridBinding::SetRowHeight() {
  row_height_.reset(
      ImageList_Create(1, fonts().normal.line() + fonts().Scaled(kAroundText), ILC_COLOR, 1, 0));
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(row_height_.get()));
}

void GridBinding::AddColumns() {
  for (std::size_t i = 0; i < grid_.columns().size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH | LVCF_SUBITEM;
    column.cx = ToPixels(grid_.columns()[i].width, fonts().dpi);
    column.iSubItem = static_cast<int>(i);
    Send(LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
}

void GridBinding::UseFonts() {
  ControlBinding::UseFonts();
  const OwnedImageList old = std::move(row_height_);
  SetRowHeight();
  for (std::size_t i = 0; i < grid_.columns().size(); ++i) {
    Send(LVM_SETCOLUMNWIDTH, i, ToPixels(grid_.columns()[i].width, fonts().dpi));
  }
}

void GridBinding::Detach() {
  detached_ = true;
  Send(LVM_SETITEMCOUNT, 0);
}

// --- what is shown ---

std::wstring GridBinding::CellText(std::int64_t row, int column) const {
  // The rows may have become fewer without the grid having told yet.
  if (detached_ || row < 0 || row >= grid_.row_count()) return {};
  std::wstring text = ToWide(grid_.Cell(row, column));
  if (reading_) return text;
  text.resize(std::min(text.size(), kMostShown));
  std::replace_if(
      text.begin(), text.end(), [](wchar_t unit) { return std::iswspace(unit) != 0; }, L' ');
  return text;
}

void GridBinding::TellCell(LVITEMW& item) {
  if ((item.mask & LVIF_TEXT) == 0) return;
  cell_ = CellText(item.iItem, item.iSubItem);
  item.pszText = cell_.data();
}

void GridBinding::SetCaption(int column, std::wstring caption) {
  LVCOLUMNW description{};
  description.mask = LVCF_TEXT;
  description.pszText = caption.data();
  Send(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
}

std::wstring GridBinding::Caption(int column) const {
  wchar_t text[kLongestCaption]{};
  LVCOLUMNW description{};
  description.mask = LVCF_TEXT;
  description.pszText = text;
  description.cchTextMax = kLongestCaption;
  Send(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
  return description.pszText == nullptr ? std::wstring() : description.pszText;
}

void GridBinding::SyncContent() {
  if (generation_ != grid_.generation()) {
    generation_ = grid_.generation();
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(std::min(grid_.row_count(), kMostRows)));
    FitLastColumn();  // the scroll bar comes and goes
    if (RowCount() > 0) Send(LVM_ENSUREVISIBLE, 0);
    InvalidateRect(window(), nullptr, TRUE);
  }
  for (int i = 0; i < ColumnCount(); ++i) {
    std::wstring caption = ToWide(grid_.columns()[static_cast<std::size_t>(i)].caption);
    if (Caption(i) != caption) SetCaption(i, std::move(caption));
  }
  ShowSelection();
}

void GridBinding::ShowSelection() {
  const std::int64_t row = grid_.selected_row() < RowCount() ? grid_.selected_row() : Grid::kNoRow;
  const std::int64_t before = SelectedRow();
  if (row == before) return;
  constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
  LVITEMW item{};
  item.stateMask = kBoth;
  if (before != Grid::kNoRow) {
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(before), reinterpret_cast<LPARAM>(&item));
  }
  if (row == Grid::kNoRow) return;
  item.state = kBoth;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
}

void GridBinding::ReadContent(forms::ControlReading& reading) const {
  const base::ScopeValue as_they_are(reading_, true);
  for (int i = 0; i < ColumnCount(); ++i) reading.texts.push_back(ToUtf8(Caption(i)));
  forms::GridReading& shown = reading.grid.emplace();
  shown.row_count = RowCount();
  shown.selected_row = SelectedRow();
  std::wstring buffer(kLongestRead, L'\0');
  for (std::int64_t row = 0; row < std::min(shown.row_count, forms::GridReading::kMostRows); ++row) {
    auto& cells = shown.rows.emplace_back();
    for (int i = 0; i < ColumnCount(); ++i) {
      LVITEMW item{};
      item.iSubItem = i;
      item.pszText = buffer.data();
      item.cchTextMax = static_cast<int>(buffer.size());
      Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
      cells.push_back(ToUtf8(item.pszText));
    }
  }
}

// --- sizes and places ---

int GridBinding::ColumnCount() const {
  return static_cast<int>(SendMessageW(header(), HDM_GETITEMCOUNT, 0, 0));
}

int GridBinding::RowHeight() const {
  const LRESULT two = Send(LVM_APPROXIMATEVIEWRECT, 2, MAKELPARAM(-1, -1));
  const LRESULT one = Send(LVM_APPROXIMATEVIEWRECT, 1, MAKELPARAM(-1, -1));
  return std::max(static_cast<int>(HIWORD(two)) - static_cast<int>(HIWORD(one)), 1);
}

int GridBinding::HeaderHeight() const {
  RECT area{0, 0, 1000, 1000};
  WINDOWPOS position{};
  HDLAYOUT layout{&area, &position};
  SendMessageW(header(), HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&layout));
  return position.cy;
}

SizeHint GridBinding::Measure() const {
  const Font& font = fonts().normal;
  const int border = 2 * SystemMetric(SM_CXEDGE, fonts().dpi);
  int columns = border + SystemMetric(SM_CXVSCROLL, fonts().dpi);
  for (const Grid::Column& column : grid_.columns()) columns += ToPixels(column.width, fonts().dpi);
  const auto height = [&](int rows) { return HeaderHeight() + rows * RowHeight() + border; };
  const int least = font.Width(kFewestCharacters);
  return {least,
          std::max(least, std::min(columns, font.Width(kWidestGrid))),
          height(kFewestRows),
          height(kPreferredRows),
          true,
          true};
}

/// Behind the last row there is always room to press beside the rows.
void GridBinding::Place(const RECT& place) {
  ControlBinding::Place(place);
  FitLastColumn();
  RECT inside{};
  GetClientRect(window(), &inside);
  const int rows = static_cast<int>(inside.bottom) - HeaderHeight();
  const int rest = rows > 0 ? rows % RowHeight() : 0;
  const int wanted = RowHeight() / 3;
  if (rows < RowHeight() || rest >= wanted) return;
  RECT smaller = place;
  smaller.bottom -= rest + 1;  // the last row in sight is cut, which is room when it is the last of all
  ControlBinding::Place(smaller);
}

/// The last column takes the width that is left over.
void GridBinding::FitLastColumn() {
  const int count = ColumnCount();
  if (count == 0) return;
  RECT inside{};
  GetClientRect(window(), &inside);
  int before = 0;
  for (int i = 0; i + 1 < count; ++i)
    before += static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i)));
  const int least = ToPixels(grid_.columns().back().width, fonts().dpi);
  const int width = std::max(least, static_cast<int>(inside.right) - before);
  Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(count - 1), width);
}

std::optional<POINT> GridBinding::BringIntoSight(std::int64_t row) {
  RECT inside{};
  GetClientRect(window(), &inside);
  if (row != Grid::kNoRow) {
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
    RECT place{};
    place.left = LVIR_BOUNDS;
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return POINT{std::clamp<LONG>(place.left + 4, 1, std::max<LONG>(inside.right - 1, 1)),
                 (place.top + place.bottom) / 2};
  }
  if (RowCount() > 0) Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(RowCount() - 1));
  for (const POINT& point : {POINT{1, inside.bottom - 1}, POINT{inside.right - 1, inside.bottom - 1}}) {
    if (RowAt(MAKELPARAM(point.x, point.y)) == Grid::kNoRow) return point;
  }
  return std::nullopt;
}

POINT GridBinding::HeaderPoint(int column) {
  RECT place{};
  SendMessageW(header(), HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
  return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

std::unique_ptr<ControlBinding> Bind(Grid& grid, HWND parent, BindingOwner& owner) {
  return std::make_unique<GridBinding>(grid, parent, owner);
}

}  // namespace kestro::adapters::win32
