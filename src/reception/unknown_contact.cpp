#include "reception/unknown_contact.h"

namespace kestro::reception {
namespace {

constexpr int kWidth = 5160;  // twips
constexpr int kHeight = 2100;

}  // namespace

UnknownContact::UnknownContact(forms::FormHost& host, const Needs& needs)
    : Form(host, "UnknownContact", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.UnknownContact", core::Spelling::kBare),
      texts_(needs.texts),
      flags_(needs.flags),
      ending_(needs.ending),
      editor_(needs.editor),
      redirect_(cmbRedirectTo, needs.flags, needs.lines, needs.transfer) {
  LayOut();
  cmbRedirectTo.SetEnabled(false);
  cmdNew.on_click = [this] { cmdNew_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
  cmbRedirectTo.on_click = [this] { cmbRedirectTo_Click(); };
  redirect_.SetReady(true);
}

void UnknownContact::LayOut() {
  body().Place(lblPhoneNumberLabel, {0, 0});
  body().Place(lblPhoneNumber, {0, 1, 1, 3});
  body().Place(cmbRedirectTo, {2, 0, 1, 2});
  body().Place(cmdNew, {2, 2});
  body().Place(cmdClose, {2, 3});
  body().GrowColumn(1);
  body().GrowRow(1);
  lblPhoneNumber.SetNamedBy(lblPhoneNumberLabel);
}

void UnknownContact::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void UnknownContact::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("270"));
    lblPhoneNumberLabel.SetCaption(texts_.GetLocalizedString("271"));
    cmdNew.SetCaption(texts_.GetLocalizedString("181"));
    cmdClose.SetCaption(texts_.GetLocalizedString("183"));
  });
}

void UnknownContact::BeforeShowControl() {
  procedure_("BeforeShowControl", [] {});
}

void UnknownContact::cmdNew_Click() {
  procedure_.Outermost("cmdNew_Click", [&] {
    const bool has_number = lblPhoneNumber.caption() != texts_.GetLocalizedString("278");
    editor_.EditNewFromCall(has_number ? std::optional(lblPhoneNumber.caption()) : std::nullopt);
  });
}

void UnknownContact::cmdClose_Click() {
  procedure_.Outermost("cmdClose_Click", [&] { Hide(); });
}

/// Logs under the name of the close button's handler; kept as it is.
void UnknownContact::cmbRedirectTo_Click() {
  procedure_.Outermost("cmdClose_Click", [&] { redirect_.Chosen(); });
}

void UnknownContact::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (!ending_.IsApplicationShutdown(unload_mode)) {
      Hide();
      cancel = true;
    } else if (!flags_.ShuttingDown) {
      ending_.IsApplicationShutdown();
    }
  });
}

}  // namespace kestro::reception
