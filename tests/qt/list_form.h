#pragma once

#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/grid.h"

namespace kestro::qt_tests {

/// Rows made on demand; counts how many cells were asked for.
class CountedRows final : public forms::GridRows {
 public:
  explicit CountedRows(std::int64_t count) : count_(count) {}
  [[nodiscard]] std::int64_t RowCount() const override { return count_; }
  [[nodiscard]] std::string Cell(std::int64_t row, int column) const override {
    ++cells_asked;
    if (row == 1 && column == 1) return "<b>bold</b> & \"quoted\"\r\nsecond line";
    return "cell " + std::to_string(row) + "/" + std::to_string(column);
  }

  mutable int cells_asked = 0;

 private:
  std::int64_t count_;
};

/// A window with a list, its tools and its keys, which writes down what reaches it.
class ListForm final : public forms::Form {
 public:
  explicit ListForm(forms::FormHost& host);

  using Menu = forms::MenuItem;

  forms::TextBox txtName{*this, nullptr, "txtName"};
  forms::TextBox txtLines{*this, nullptr, "txtLines", forms::TextBox::Lines::kMany};
  forms::ComboBox cmbTitle{*this, nullptr, "cmbTitle", forms::ComboBox::Style::kEditable};
  forms::ComboBox cmbKind{*this, nullptr, "cmbKind"};
  forms::Button btnSearch{*this, nullptr, "btnSearch", forms::Button::Role::kDefault};
  forms::Button btnClose{*this, nullptr, "btnClose", forms::Button::Role::kCancel};
  forms::ToolBar tools{*this, nullptr, "tools", {"new", "edit", "delete", "", "call", "", "web"}};
  forms::Grid grid{
      *this, nullptr, "grid", {{"Name", "nm", 3000}, {"Company", "co", 3000}, {"City", "ci", 900}}};
  Menu mnuList{*this, nullptr, "mnuList", Menu::Role::kBar};
  Menu mnuNew{*this, &mnuList, "mnuNew"};
  Menu mnuEdit{*this, &mnuList, "mnuEdit"};
  Menu mnuDelete{*this, &mnuList, "mnuDelete"};
  Menu mnuRefresh{*this, &mnuList, "mnuRefresh"};
  Menu mPopup{*this, nullptr, "mPopup", Menu::Role::kPopup};
  Menu mPopEnd{*this, &mPopup, "mPopEnd"};

  CountedRows many{1'000'000};
  CountedRows few{3};
  CountedRows none{0};
  /// The window selects what is pressed, as long as this holds.
  bool follows_presses = true;
  std::vector<std::string> events;

 private:
  void Form_Activate() override { events.emplace_back("activate"); }
  void LayOut();
  void Connect();
  void Note(const std::string& event) { events.push_back(event); }
};

inline ListForm::ListForm(forms::FormHost& host) : Form(host, "ListForm", 9000, 7500) {
  LayOut();
  Connect();
  SetCaption("List");
  for (const char* item : {"Mr", "Mrs", "Dr"}) cmbTitle.AddItem(item);
  for (const char* item : {"first", "second"}) cmbKind.AddItem(item);
  btnSearch.SetCaption("S&earch");
  btnClose.SetCaption("&Close");
  for (const int number : {1, 2, 3, 5, 7}) tools.SetToolTip(number, "Tool & " + std::to_string(number));
  mnuList.SetCaption("&List");
  mnuNew.SetCaption("&New");
  mnuNew.SetShortcut("Ctrl+N");
  mnuEdit.SetCaption("&Edit");
  mnuEdit.SetShortcut("Enter");
  mnuDelete.SetCaption("&Delete");
  mnuDelete.SetShortcut("Del");
  mnuRefresh.SetCaption("&Refresh");
  mnuRefresh.SetShortcut("F5");
  mPopEnd.SetCaption("End");
  mPopEnd.SetShortcut("Ctrl+Q");
}

inline void ListForm::LayOut() {
  body().Place(tools, {0, 0, 1, 3});
  body().Place(txtName, {1, 0});
  body().Place(cmbTitle, {1, 1});
  body().Place(cmbKind, {1, 2});
  body().Place(txtLines, {2, 0});
  body().Place(btnSearch, {2, 1});
  body().Place(btnClose, {2, 2});
  body().Place(grid, {3, 0, 1, 3});
  body().GrowColumn(0);
  body().GrowRow(3);
}

inline void ListForm::Connect() {
  grid.on_mouse_down = [this](std::int64_t row) {
    Note("row " + std::to_string(row));
    if (follows_presses) grid.SelectRow(row);
  };
  grid.on_head_click = [this](int column) {
    Note("header " + grid.columns()[static_cast<std::size_t>(column)].data_field);
    grid.Refresh();
  };
  grid.on_double_click = [this] { Note("double click"); };
  tools.on_button_click = [this](int number) { Note("tool " + std::to_string(number)); };
  cmbTitle.on_click = [this] { Note("cmbTitle " + std::to_string(cmbTitle.list_index())); };
  cmbKind.on_click = [this] { Note("cmbKind " + std::to_string(cmbKind.list_index())); };
  txtName.on_change = [this] { Note("txtName " + txtName.text()); };
  btnSearch.on_click = [this] { Note("btnSearch"); };
  btnClose.on_click = [this] { Note("btnClose"); };
  for (Menu* item : {&mnuNew, &mnuEdit, &mnuDelete, &mnuRefresh, &mPopEnd}) {
    item->on_click = [this, item] { Note(item->name()); };
  }
  AddShortcut("Ctrl+F", [this] {
    Note("find");
    txtName.SetFocus();
  });
}

}  // namespace kestro::qt_tests
