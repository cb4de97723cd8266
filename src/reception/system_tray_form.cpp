#include "reception/system_tray_form.h"

namespace kestro::reception {
namespace {

constexpr int kWidth = 4500;  // twips; never seen
constexpr int kHeight = 1500;

}  // namespace

SystemTrayForm::SystemTrayForm(forms::FormHost& host, core::LogModule& log, core::Localization& texts)
    : Form(host, "SystemTrayForm", kWidth, kHeight),
      procedure_(log, "KESTROCTI.SystemTrayForm", core::Spelling::kFullStop),
      texts_(texts) {
  int column = 0;
  for (forms::Button* button : {&btnIncomingCall, &btnAcceptCall, &btnDisconnectCall, &btnTransferCall}) {
    button->SetEnabled(false);
    body().Place(*button, {0, column++});
  }
  mnuRedirectList.at(0).SetEnabled(false);
}

void SystemTrayForm::Form_Load() {
  if (on_loading) on_loading();
  procedure_.Outermost(
      "Form_Load",
      [&] {
        GetFormTextTranslation();
        if (on_load) on_load();
      },
      [&](const base::RuntimeError& error) {
        if (on_load_failed) on_load_failed(error);
      });
}

void SystemTrayForm::Form_Resize() {
  procedure_.Outermost("Form_Resize", [&] {
    if (window_state() == forms::WindowState::kMinimized) Hide();
  });
}

void SystemTrayForm::Form_Unload() {
  procedure_.Outermost("Form_Unload", [&] {
    if (on_unload) on_unload();
  });
}

void SystemTrayForm::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    mPopRedirect.SetCaption(texts_.GetLocalizedString("274"));
    mnuRedirectList.at(0).SetCaption(texts_.GetLocalizedString("150"));
    mPopSettings.SetCaption(texts_.GetLocalizedString("275"));
    mPopStartStop.SetCaption(texts_.GetLocalizedString("276"));
    mnuContactsList.SetCaption(texts_.GetLocalizedString("277"));
    mAboutForm.SetCaption(texts_.GetLocalizedString("229"));
    mPopExit.SetCaption(texts_.GetLocalizedString("230"));
  });
}

}  // namespace kestro::reception
