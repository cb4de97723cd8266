#include "reception/internal_call.h"

namespace kestro::reception {
namespace {

constexpr int kWidth = 5160;  // twips
constexpr int kHeight = 1650;

}  // namespace

InternalCall::InternalCall(forms::FormHost& host, core::LogModule& log, core::Localization& texts)
    : Form(host, "InternalCall", kWidth, kHeight),
      procedure_(log, "KESTROCTI.InternalCall", core::Spelling::kBare),
      texts_(texts) {
  body().Place(lblPhoneNumberLabel, {0, 0});
  body().Place(lblCaller, {0, 1, 1, 2});
  body().Place(CancelButton, {2, 2});
  body().GrowColumn(1);
  body().GrowRow(1);
  lblCaller.SetNamedBy(lblPhoneNumberLabel);
  CancelButton.on_click = [this] { CancelButton_Click(); };
}

void InternalCall::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void InternalCall::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("259"));
    lblPhoneNumberLabel.SetCaption(texts_.GetLocalizedString("260"));
    CancelButton.SetCaption(texts_.GetLocalizedString("183"));
  });
}

/// Like its button, the window's own close button hides it.
void InternalCall::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (unload_mode != forms::kControlMenu) return;
    Hide();
    cancel = true;
  });
}

void InternalCall::CancelButton_Click() {
  procedure_.Outermost("CancelButton_Click", [&] { Hide(); });
}

}  // namespace kestro::reception
