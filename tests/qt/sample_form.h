#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/form.h"

namespace kestro::qt_tests {

/// A window with every kind of control, which writes down what reaches it.
class SampleForm final : public forms::Form {
 public:
  explicit SampleForm(forms::FormHost& host, std::string_view name = "SampleForm");

  using Lines = forms::TextBox::Lines;
  using Menu = forms::MenuItem;
  using MenuRole = forms::MenuItem::Role;
  using ButtonRole = forms::Button::Role;

  forms::Label lblNumberLabel{*this, nullptr, "lblNumberLabel"};
  forms::Label lblNumber{*this, nullptr, "lblNumber", forms::Label::Role::kHeading};
  forms::Label lblName{*this, nullptr, "lblName"};
  forms::TextBox txtName{*this, nullptr, "txtName"};
  forms::ComboBox cmbLine{*this, nullptr, "cmbLine"};
  forms::TabPages pages{*this, nullptr, "pages", 2};
  forms::Frame frmFirst{*this, &pages.page(0), "frmFirst"};
  forms::Label lblValue{*this, &frmFirst, "lblValue", forms::Label::Role::kValue};
  forms::CheckBox chkLog{*this, &frmFirst, "chkLog"};
  forms::Picture picture{*this, &frmFirst, "picture"};
  forms::TextBox txtNote{*this, &pages.page(1), "txtNote", Lines::kMany};
  forms::Button cmdOk{*this, nullptr, "cmdOk", ButtonRole::kDefault};
  forms::Button cmdCancel{*this, nullptr, "cmdCancel", ButtonRole::kCancel};
  Menu mnuFile{*this, nullptr, "mnuFile", MenuRole::kBar};
  Menu mnuOpen{*this, &mnuFile, "mnuOpen"};
  Menu mnuSpacer{*this, &mnuFile, "mnuSpacer", MenuRole::kSeparator};
  Menu mnuSwitch{*this, &mnuFile, "mnuSwitch"};
  forms::MenuArray mnuList{*this, mnuSwitch, "mnuList"};
  Menu mPopup{*this, nullptr, "mPopup", MenuRole::kPopup};
  Menu mPopEnd{*this, &mPopup, "mPopEnd"};

  /// What happened, in order: "cmdOk", "cmbLine 1", "txtName abc", "unload 0", ...
  std::vector<std::string> events;
  bool refuse_to_close = false;

 private:
  void Form_Activate() override { events.emplace_back("activate"); }
  void Form_Resize() override { events.emplace_back("resize"); }
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void LayOut();
  void Connect();
};

inline SampleForm::SampleForm(forms::FormHost& host, std::string_view name) : Form(host, name, 6000, 4500) {
  LayOut();
  Connect();
  SetCaption("Sample");
  lblNumberLabel.SetCaption("Number:");
  lblNumber.SetCaption("602 111 222");
  lblName.SetCaption("&Name:");
  cmbLine.AddItem("EXT 101");
  cmbLine.AddItem("EXT 102 & more");
  pages.SetTabCaption(0, "First");
  pages.SetTabCaption(1, "Note");
  frmFirst.SetCaption("&Frame");
  lblValue.SetCaption("A & B <b>bold</b>");
  chkLog.SetCaption("&Log into a file");
  cmdOk.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
  mnuFile.SetCaption("&File");
  mnuOpen.SetCaption("&Open");
  mnuSwitch.SetCaption("&Switch");
  mnuList.at(0).SetCaption("none");
  mPopEnd.SetCaption("&End");
}

inline void SampleForm::LayOut() {
  body().Place(lblNumberLabel, {0, 0});
  body().Place(lblNumber, {0, 1, 1, 3});
  body().Place(lblName, {1, 0});
  body().Place(txtName, {1, 1, 1, 3});
  body().Place(cmbLine, {2, 1, 1, 3});
  body().Place(pages, {3, 0, 1, 4});
  body().Place(cmdOk, {4, 2});
  body().Place(cmdCancel, {4, 3});
  body().GrowColumn(1);
  body().GrowRow(3);
  pages.page(0).Place(frmFirst, {0, 0});
  pages.page(1).Place(txtNote, {0, 0});
  frmFirst.Place(lblValue, {0, 0});
  frmFirst.Place(chkLog, {1, 0});
  frmFirst.Place(picture, {0, 1, 2, 1});
  lblNumber.SetNamedBy(lblNumberLabel);
  txtName.SetNamedBy(lblName);
}

inline void SampleForm::Connect() {
  cmdOk.on_click = [this] { events.emplace_back("cmdOk"); };
  cmdCancel.on_click = [this] { events.emplace_back("cmdCancel"); };
  cmbLine.on_click = [this] { events.push_back("cmbLine " + std::to_string(cmbLine.list_index())); };
  txtName.on_change = [this] { events.push_back("txtName " + txtName.text()); };
  txtNote.on_change = [this] { events.push_back("txtNote " + txtNote.text()); };
  mnuOpen.on_click = [this] { events.emplace_back("mnuOpen"); };
  mPopEnd.on_click = [this] { events.emplace_back("mPopEnd"); };
  mnuList.on_click = [this](int index) { events.push_back("mnuList " + std::to_string(index)); };
}

inline void SampleForm::Form_QueryUnload(bool& cancel, int unload_mode) {
  events.push_back("unload " + std::to_string(unload_mode));
  cancel = refuse_to_close;
}

}  // namespace kestro::qt_tests
