#include "management/about_form.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 5100;  // twips
constexpr int kHeight = 2100;

}  // namespace

frmAbout::frmAbout(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmAbout", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmAbout", core::Spelling::kFullStop),
      texts_(needs.texts),
      messages_(needs.messages),
      foreground_(needs.foreground),
      system_(needs.system),
      information_(needs.information),
      product_(needs.product),
      version_(needs.version) {
  LayOut();
  cmdSysInfo.on_click = [this] { cmdSysInfo_Click(); };
  cmdOK.on_click = [this] { cmdOK_Click(); };
  AddShortcut("Esc", [this] { cmdOK_Click(); });
}

void frmAbout::LayOut() {
  body().Place(lblTitle, {0, 0, 1, 3});
  body().Place(lblVersion, {1, 0, 1, 3});
  body().Place(cmdSysInfo, {3, 1});
  body().Place(cmdOK, {3, 2});
  body().GrowColumn(0);
  body().GrowRow(2);
}

void frmAbout::BringUp() {
  Show();
  SetWindowState(forms::WindowState::kNormal);
  foreground_.ForceForegroundWindow(handle());
}

void frmAbout::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

/// The window that this one has opened goes with it.
void frmAbout::Form_Unload() {
  procedure_.Outermost("Form_Unload", [&] { information_.RequestUnload(forms::kFromCode); });
}

void frmAbout::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("191"));
    lblTitle.SetCaption(product_);
    lblVersion.SetCaption(texts_.GetLocalizedString("174") + " " + version_);
    cmdSysInfo.SetCaption(texts_.GetLocalizedString("194"));
    cmdOK.SetCaption(texts_.GetLocalizedString("193"));
  });
}

/// The system's own tool knows more than we do; where there is none, our window tells what it can.
void frmAbout::StartSysInfo() {
  procedure_("StartSysInfo", [&] {
    if (system_.StartTool()) return;
    const ports::SystemInformation information = system_.Read();
    if (information.empty()) {
      messages_.Notice("149");
    } else {
      information_.ShowInformation(product_ + " " + version_, information);
    }
  });
}

void frmAbout::cmdSysInfo_Click() {
  procedure_.Outermost(
      "cmdSysInfo_Click", [&] { StartSysInfo(); },
      [&](const base::RuntimeError&) { messages_.Notice("149"); });
}

void frmAbout::cmdOK_Click() {
  procedure_.Outermost("cmdOK_Click", [&] { Hide(); });
}

}  // namespace kestro::management
