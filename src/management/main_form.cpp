#include "management/main_form.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 9000;  // twips
constexpr int kHeight = 6000;

}  // namespace

frmMainForm::frmMainForm(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmMainForm", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmMainForm", core::Spelling::kFullStop),
      texts_(needs.texts),
      flags_(needs.flags),
      ending_(needs.ending),
      foreground_(needs.foreground) {
  mnuExit.on_click = [this] { mnuExit_Click(); };
}

void frmMainForm::BringUp() {
  Show();
  SetWindowState(forms::WindowState::kNormal);
  foreground_.ForceForegroundWindow(handle());
}

void frmMainForm::Form_Load() {
  procedure_.Outermost("Form_Load", [&] {
    GetFormTextTranslation();
    if (on_load) on_load();
  });
}

void frmMainForm::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("245"));
    mnuApplication.SetCaption(texts_.GetLocalizedString("214"));
    mnuExit.SetCaption(texts_.GetLocalizedString("230"));
  });
}

void frmMainForm::mnuExit_Click() {
  procedure_.Outermost("mnuExit_Click", [&] { ending_.IsApplicationShutdown(); });
}

/// The user's close button puts the window away; the application goes on.
void frmMainForm::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (ending_.IsApplicationShutdown(unload_mode)) {
      if (!flags_.ShuttingDown) ending_.IsApplicationShutdown();
      return;
    }
    cancel = true;
    if (stays_reachable_) {
      SetWindowState(forms::WindowState::kMinimized);
    } else {
      Hide();
    }
  });
}

}  // namespace kestro::management
