#pragma once

#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/grid.h"

namespace kestro::front_end_tests {

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

/// A window with every kind of control and with keys, which writes down what reaches it.
class SampleForm final : public forms::Form {
 public:
  explicit SampleForm(forms::FormHost& host, std::string_view name = "SampleForm");

  using Lines = forms::TextBox::Lines;
  using Menu = forms::MenuItem;
  using MenuRole = forms::MenuItem::Role;
  using ButtonRole = forms::Button::Role;

  forms::ToolBar tools{*this, nullptr, "tools", {"new", "edit", "delete", "", "call", "", "web"}};
  forms::Label lblNumberLabel{*this, nullptr, "lblNumberLabel"};
  forms::Label lblNumber{*this, nullptr, "lblNumber", forms::Label::Role::kHeading};
  forms::Label lblName{*this, nullptr, "lblName"};
  forms::TextBox txtName{*this, nullptr, "txtName"};
  forms::ComboBox cmbLine{*this, nullptr, "cmbLine"};
  forms::ComboBox cmbTitle{*this, nullptr, "cmbTitle", forms::ComboBox::Style::kEditable};
  forms::Grid grid{
      *this, nullptr, "grid", {{"Name", "nm", 3000}, {"Company", "co", 3000}, {"City", "ci", 900}}};
  forms::TabPages pages{*this, nullptr, "pages", 2};
  forms::Frame frmFirst{*this, &pages.page(0), "frmFirst"};
  forms::Label lblValue{*this, &frmFirst, "lblValue", forms::Label::Role::kValue};
  forms::CheckBox chkLog{*this, &frmFirst, "chkLog"};
  forms::Picture picture{*this, &frmFirst, "picture"};
  forms::ProgressBar progress{*this, &frmFirst, "progress"};
  forms::TextBox txtNote{*this, &pages.page(1), "txtNote", Lines::kMany};
  forms::Button cmdOk{*this, nullptr, "cmdOk", ButtonRole::kDefault};
  forms::Button cmdCancel{*this, nullptr, "cmdCancel", ButtonRole::kCancel};
  Menu mnuFile{*this, nullptr, "mnuFile", MenuRole::kBar};
  Menu mnuNew{*this, &mnuFile, "mnuNew"};
  Menu mnuEdit{*this, &mnuFile, "mnuEdit"};
  Menu mnuDelete{*this, &mnuFile, "mnuDelete"};
  Menu mnuRefresh{*this, &mnuFile, "mnuRefresh"};
  Menu mnuSpacer{*this, &mnuFile, "mnuSpacer", MenuRole::kSeparator};
  Menu mnuSwitch{*this, &mnuFile, "mnuSwitch"};
  forms::MenuArray mnuList{*this, mnuSwitch, "mnuList"};
  Menu mPopup{*this, nullptr, "mPopup", MenuRole::kPopup};
  Menu mPopEnd{*this, &mPopup, "mPopEnd"};

  CountedRows many{1'000'000};
  CountedRows few{3};
  CountedRows none{0};
  /// The window selects what is pressed, as long as this holds.
  bool follows_presses = true;
  bool refuse_to_close = false;
  /// What happened, in order: "cmdOk", "cmbLine 1", "txtName abc", "row 0", "unload 0", ...
  std::vector<std::string> events;

 private:
  void Form_Activate() override { Note("activate"); }
  void Form_Resize() override { Note("resize"); }
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void LayOut();
  void Connect();
  void Note(const std::string& event) { events.push_back(event); }
};

inline SampleForm::SampleForm(forms::FormHost& host, std::string_view name) : Form(host, name, 9000, 7500) {
  LayOut();
  Connect();
  SetCaption("Sample");
  const std::pair<forms::CaptionedControl*, const char*> captions[] = {
      {&lblNumberLabel, "Number:"},
      {&lblNumber, "602 111 222"},
      {&lblName, "&Name:"},
      {&frmFirst, "&Frame"},
      {&lblValue, "A & B <b>bold</b>"},
      {&chkLog, "&Log into a file"},
      {&cmdOk, "OK"},
      {&cmdCancel, "Cancel"},
      {&mnuFile, "&File"},
      {&mnuNew, "&New"},
      {&mnuEdit, "&Edit"},
      {&mnuDelete, "&Delete"},
      {&mnuRefresh, "&Refresh"},
      {&mnuSwitch, "&Switch"},
      {&mnuList.at(0), "none"},
      {&mPopEnd, "&End"},
  };
  for (const auto& [control, caption] : captions) control->SetCaption(caption);
  mnuNew.SetShortcut("Ctrl+N");
  mnuEdit.SetShortcut("Enter");
  mnuDelete.SetShortcut("Del");
  mnuRefresh.SetShortcut("F5");
  mPopEnd.SetShortcut("Ctrl+Q");
  pages.SetTabCaption(0, "First");
  pages.SetTabCaption(1, "Note");
  for (const char* item : {"EXT 101", "EXT 102 & more"}) cmbLine.AddItem(item);
  for (const char* item : {"Mr", "Mrs", "Dr"}) cmbTitle.AddItem(item);
  for (const int number : {1, 2, 3, 5, 7}) tools.SetToolTip(number, "Tool & " + std::to_string(number));
}

inline void SampleForm::LayOut() {
  body().Place(tools, {0, 0, 1, 4});
  body().Place(lblNumberLabel, {1, 0});
  body().Place(lblNumber, {1, 1, 1, 3});
  body().Place(lblName, {2, 0});
  body().Place(txtName, {2, 1, 1, 3});
  body().Place(cmbLine, {3, 0, 1, 2});
  body().Place(cmbTitle, {3, 2, 1, 2});
  body().Place(grid, {4, 0, 1, 4});
  body().Place(pages, {5, 0, 1, 4});
  body().Place(cmdOk, {6, 2});
  body().Place(cmdCancel, {6, 3});
  body().GrowColumn(1);
  body().GrowRow(4);
  pages.page(0).Place(frmFirst, {0, 0});
  pages.page(1).Place(txtNote, {0, 0});
  frmFirst.Place(lblValue, {0, 0});
  frmFirst.Place(chkLog, {1, 0});
  frmFirst.Place(picture, {0, 1, 2, 1});
  frmFirst.Place(progress, {2, 0, 1, 2});
  lblNumber.SetNamedBy(lblNumberLabel);
  txtName.SetNamedBy(lblName);
}

inline void SampleForm::Connect() {
  for (forms::Button* button : {&cmdOk, &cmdCancel}) {
    button->on_click = [this, button] { Note(button->name()); };
  }
  for (forms::ComboBox* combo : {&cmbLine, &cmbTitle}) {
    combo->on_click = [this, combo] { Note(combo->name() + " " + std::to_string(combo->list_index())); };
  }
  for (forms::TextBox* box : {&txtName, &txtNote}) {
    box->on_change = [this, box] { Note(box->name() + " " + box->text()); };
  }
  for (Menu* item : {&mnuNew, &mnuEdit, &mnuDelete, &mnuRefresh, &mPopEnd}) {
    item->on_click = [this, item] { Note(item->name()); };
  }
  mnuList.on_click = [this](int index) { Note("mnuList " + std::to_string(index)); };
  tools.on_button_click = [this](int number) { Note("tool " + std::to_string(number)); };
  grid.on_mouse_down = [this](std::int64_t row) {
    Note("row " + std::to_string(row));
    if (follows_presses) grid.SelectRow(row);
  };
  grid.on_head_click = [this](int column) {
    Note("header " + grid.columns()[static_cast<std::size_t>(column)].data_field);
    grid.Refresh();
  };
  grid.on_double_click = [this] { Note("double click"); };
  AddShortcut("Ctrl+F", [this] {
    Note("find");
    txtName.SetFocus();
  });
}

inline void SampleForm::Form_QueryUnload(bool& cancel, int unload_mode) {
  Note("unload " + std::to_string(unload_mode));
  cancel = refuse_to_close;
}

}  // namespace kestro::front_end_tests
