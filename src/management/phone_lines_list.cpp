#include "management/phone_lines_list.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 6600;  // twips
constexpr int kHeight = 5400;

}  // namespace

frmPhoneLinesList::frmPhoneLinesList(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmPhoneLinesList", kWidth, kHeight),
      LinesGrid(*this, &Frame1, "LinesGrid", {{"", "Line", 1500}, {"", "Name", 3500}}),
      procedure_(needs.log, "KESTROCTI.frmPhoneLinesList", core::Spelling::kBare),
      closing_(needs.log),
      messages_(needs.messages),
      texts_(needs.texts),
      shared_(needs.shared),
      contacts_(needs.contacts),
      editor_(needs.editor) {
  LayOut();
  Connect();
}

void frmPhoneLinesList::LayOut() {
  Frame1.Place(LinesGrid, {0, 0, 4, 1});
  Frame1.Place(cmdNew, {0, 1});
  Frame1.Place(cmdEdit, {1, 1});
  Frame1.Place(cmdDelete, {2, 1});
  Frame1.GrowColumn(0);
  Frame1.GrowRow(3);
  body().Place(Frame1, {0, 0, 1, 2});
  body().Place(OKButton, {1, 1});
  body().GrowColumn(0);
  body().GrowRow(0);
}

void frmPhoneLinesList::Connect() {
  LinesGrid.on_head_click = [this](int column) { LinesGrid_HeadClick(column); };
  LinesGrid.on_mouse_down = [this](std::int64_t row) { LinesGrid_MouseDown(row); };
  LinesGrid.on_double_click = [this] { cmdEdit_Click(); };
  cmdNew.on_click = [this] { cmdNew_Click(); };
  cmdEdit.on_click = [this] { cmdEdit_Click(); };
  cmdDelete.on_click = [this] { cmdDelete_Click(); };
  OKButton.on_click = [this] { OKButton_Click(); };
}

void frmPhoneLinesList::Form_Load() {
  procedure_.Outermost("Form_Load", [&] {
    GetFormTextTranslation();
    FillList();
  });
}

void frmPhoneLinesList::Form_Unload() {
  procedure_.Outermost("Form_Unload", [&] { CloseList(); });
}

void frmPhoneLinesList::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("251"));
    Frame1.SetCaption(texts_.GetLocalizedString("246"));
    LinesGrid.SetColumnCaption(0, texts_.GetLocalizedString("247"));
    LinesGrid.SetColumnCaption(1, texts_.GetLocalizedString("248"));
    cmdNew.SetCaption(texts_.GetLocalizedString("249"));
    cmdEdit.SetCaption(texts_.GetLocalizedString("250"));
    cmdDelete.SetCaption(texts_.GetLocalizedString("205"));
    OKButton.SetCaption(texts_.GetLocalizedString("193"));
  });
}

void frmPhoneLinesList::CloseList() {
  LinesGrid.SetRows(nullptr);
  rows_.reset();
  closing_.CloseRecordset(lines_);
}

void frmPhoneLinesList::FillList() {
  CloseList();
  lines_ = contacts_.Connected<contacts::PhoneLineService>().ListPhoneLines();
  rows_ = std::make_unique<RecordsetRows>(*lines_, LinesGrid.columns());
  LinesGrid.SetRows(rows_.get());
}

void frmPhoneLinesList::LinesGrid_HeadClick(int column) {
  procedure_.Outermost("LinesGrid_HeadClick", [&] {
    if (!lines_) return;
    shared_.SetSortStringForDataSource(*lines_,
                                       LinesGrid.columns().at(static_cast<std::size_t>(column)).data_field);
    LinesGrid.Refresh();
  });
}

void frmPhoneLinesList::LinesGrid_MouseDown(std::int64_t row) {
  procedure_.Outermost("LinesGrid_MouseDown", [&] { LinesGrid.SelectRow(row); });
}

bool frmPhoneLinesList::HasSelection() {
  if (LinesGrid.selected_row() != forms::Grid::kNoRow) return true;
  messages_.Notice("121");
  return false;
}

contacts::PhoneLine frmPhoneLinesList::SelectedLine() {
  lines_->MoveTo(LinesGrid.selected_row());
  contacts::PhoneLine line;
  line.id = lines_->Integer(lines_->FieldIndex("id"));
  line.Line = lines_->Text(lines_->FieldIndex("Line"));
  line.Name = lines_->Text(lines_->FieldIndex("Name"));
  return line;
}

void frmPhoneLinesList::cmdNew_Click() {
  procedure_.Outermost("cmdNew_Click", [&] {
    editor_.EditNew(*this);
    FillList();
  });
}

void frmPhoneLinesList::cmdEdit_Click() {
  procedure_.Outermost("cmdEdit_Click", [&] {
    if (!HasSelection()) return;
    editor_.Edit(SelectedLine(), *this);
    FillList();
  });
}

/// Asks no question. Logs under the name of the edit button's handler; kept as it is.
void frmPhoneLinesList::cmdDelete_Click() {
  procedure_.Outermost(
      "cmdEdit_Click",
      [&] {
        if (!HasSelection()) return;
        contacts_.Connected<contacts::PhoneLineService>().DeletePhoneLine(SelectedLine());
        FillList();
      },
      [&](const base::RuntimeError&) { messages_.Warning("122"); });
}

void frmPhoneLinesList::OKButton_Click() {
  procedure_.Outermost("OKButton_Click", [&] { RequestUnload(forms::kFromCode); });
}

}  // namespace kestro::management
