#include "management/user_fields_names.h"

#include "base/scope_value.h"
#include "base/text.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 6300;  // twips
constexpr int kHeight = 3000;

}  // namespace

frmUserFieldsNames::frmUserFieldsNames(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmUserFieldsNames", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmUserFieldsNames", core::Spelling::kBare),
      messages_(needs.messages),
      texts_(needs.texts),
      flags_(needs.flags),
      contacts_(needs.contacts) {
  LayOut();
  OKButton.on_click = [this] { OKButton_Click(); };
  CancelButton.on_click = [this] { CancelButton_Click(); };
}

void frmUserFieldsNames::LayOut() {
  int row = 0;
  for (std::size_t i = 0; i < boxes_.size(); ++i, ++row) {
    body().Place(*labels_[i], {row, 0});
    body().Place(*boxes_[i], {row, 1, 1, 3});
    boxes_[i]->SetNamedBy(*labels_[i]);
  }
  body().Place(OKButton, {row + 1, 2});
  body().Place(CancelButton, {row + 1, 3});
  body().GrowColumn(1);
  body().GrowRow(row);
}

void frmUserFieldsNames::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void frmUserFieldsNames::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("258"));
    for (std::size_t i = 0; i < labels_.size(); ++i) {
      labels_[i]->SetCaption(texts_.GetLocalizedString("257", {std::to_string(i + 1)}));
    }
    OKButton.SetCaption(texts_.GetLocalizedString("193"));
    CancelButton.SetCaption(texts_.GetLocalizedString("210"));
  });
}

void frmUserFieldsNames::Edit(forms::Form& owner) {
  Load();
  BeforeShowForm();
  const base::ScopeValue modal(flags_.ModalDialogOpen, true);
  ShowModal(&owner);
}

void frmUserFieldsNames::BeforeShowForm() {
  procedure_.Outermost("BeforeShowForm", [&] {
    for (forms::TextBox* box : boxes_) box->SetText("");
    const auto names = contacts_.Connected<contacts::UserFieldService>().GetUserFieldNames();
    if (!names) return;
    for (std::size_t i = 0; i < boxes_.size(); ++i) boxes_[i]->SetText((*names)[i]);
  });
}

void frmUserFieldsNames::OKButton_Click() {
  procedure_.Outermost(
      "OKButton_Click",
      [&] {
        contacts::UserFieldNames names;
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
          names[i] = base::Trim(boxes_[i]->text());
          if (!names[i].empty()) continue;
          messages_.Notice("135");
          return boxes_[i]->SetFocus();
        }
        contacts_.Connected<contacts::UserFieldService>().StoreUserFieldNames(names);
        Hide();
      },
      [&](const base::RuntimeError&) { messages_.Warning("136"); });
}

void frmUserFieldsNames::CancelButton_Click() {
  procedure_.Outermost("CancelButton_Click", [&] { Hide(); });
}

void frmUserFieldsNames::Form_Unload() {
  procedure_.Outermost("Form_Unload", [&] { CancelButton_Click(); });
}

}  // namespace kestro::management
