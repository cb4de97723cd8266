#include "management/edit_line.h"

#include "base/text.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 4800;  // twips
constexpr int kHeight = 2000;

}  // namespace

frmEditLine::frmEditLine(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmEditLine", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmEditLine", core::Spelling::kBare),
      messages_(needs.messages),
      texts_(needs.texts),
      contacts_(needs.contacts) {
  LayOut();
  OKButton.on_click = [this] { OKButton_Click(); };
  CancelButton.on_click = [this] { CancelButton_Click(); };
}

void frmEditLine::LayOut() {
  body().Place(lblLine, {0, 0});
  body().Place(txtLine, {0, 1, 1, 3});
  body().Place(lblName, {1, 0});
  body().Place(txtName, {1, 1, 1, 3});
  body().Place(OKButton, {3, 2});
  body().Place(CancelButton, {3, 3});
  body().GrowColumn(1);
  body().GrowRow(2);
  txtLine.SetNamedBy(lblLine);
  txtName.SetNamedBy(lblName);
}

void frmEditLine::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void frmEditLine::Form_Activate() {
  procedure_.Outermost("Form_Activate", [] {});
}

void frmEditLine::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("211"));
    lblLine.SetCaption(texts_.GetLocalizedString("212"));
    lblName.SetCaption(texts_.GetLocalizedString("213"));
    OKButton.SetCaption(texts_.GetLocalizedString("193"));
    CancelButton.SetCaption(texts_.GetLocalizedString("210"));
  });
}

void frmEditLine::EditNew(forms::Form& owner) { Show({}, owner); }

void frmEditLine::Edit(const contacts::PhoneLine& line, forms::Form& owner) { Show(line, owner); }

void frmEditLine::Show(const contacts::PhoneLine& line, forms::Form& owner) {
  Load();
  id_ = line.id;
  txtLine.SetText(line.Line);
  txtName.SetText(line.Name.value_or(""));
  ShowModal(&owner);
}

void frmEditLine::OKButton_Click() {
  procedure_.Outermost(
      "OKButton_Click",
      [&] {
        auto service = contacts_.Connected<contacts::PhoneLineService>();
        if (!IsComplete()) return;
        Store(service);
        RequestUnload(forms::kFromCode);
      },
      [&](const base::RuntimeError&) { messages_.Warning("125"); });
}

bool frmEditLine::IsComplete() {
  const auto missing = [this](forms::TextBox& field, std::string_view text_id) {
    if (!base::Trim(field.text()).empty()) return false;
    messages_.Notice(text_id);
    field.SetFocus();
    return true;
  };
  return !missing(txtLine, "123") && !missing(txtName, "124");
}

/// The number loses leading zeros; a text that is no number raises.
void frmEditLine::Store(contacts::PhoneLineService& service) {
  contacts::PhoneLine line;
  line.id = id_;
  line.Line = std::to_string(base::ToInt32(base::Trim(txtLine.text())));
  line.Name = base::Trim(txtName.text());
  if (id_ == 0) {
    service.AddPhoneLine(line);
  } else {
    service.UpdatePhoneLine(line);
  }
}

void frmEditLine::CancelButton_Click() {
  procedure_.Outermost("CancelButton_Click", [&] { RequestUnload(forms::kFromCode); });
}

}  // namespace kestro::management
