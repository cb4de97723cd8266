#include "management/system_information_form.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 6300;  // twips
constexpr int kHeight = 3300;

void SetRow(forms::Label& caption, forms::Label& value, std::string_view text) {
  value.SetCaption(text);
  caption.SetVisible(!text.empty());
  value.SetVisible(!text.empty());
}

}  // namespace

frmSystemInformation::frmSystemInformation(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmSystemInformation", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmSystemInformation", core::Spelling::kFullStop),
      texts_(needs.texts),
      foreground_(needs.foreground),
      clipboard_(needs.clipboard) {
  LayOut();
  cmdCopy.on_click = [this] { cmdCopy_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
}

std::vector<frmSystemInformation::Row> frmSystemInformation::Rows() {
  return {{lblProgramLabel, lblProgram, "304"},
          {lblToolkitLabel, lblToolkit, "305"},
          {lblDatabaseEngineLabel, lblDatabaseEngine, "306"},
          {lblSystemLabel, lblSystem, "307"},
          {lblDesktopLabel, lblDesktop, "308"}};
}

void frmSystemInformation::LayOut() {
  int row = 0;
  for (const Row& entry : Rows()) {
    body().Place(entry.caption, {row, 0});
    body().Place(entry.value, {row, 1, 1, 3});
    entry.value.SetNamedBy(entry.caption);
    ++row;
  }
  body().GrowRow(row);
  body().Place(cmdCopy, {row + 1, 2});
  body().Place(cmdClose, {row + 1, 3});
  body().GrowColumn(1);
}

void frmSystemInformation::ShowInformation(std::string_view program,
                                           const ports::SystemInformation& information) {
  procedure_("ShowInformation", [&] {
    SetRow(lblProgramLabel, lblProgram, program);
    SetRow(lblToolkitLabel, lblToolkit, information.toolkit);
    SetRow(lblDatabaseEngineLabel, lblDatabaseEngine, information.database_engine);
    SetRow(lblSystemLabel, lblSystem, information.system);
    SetRow(lblDesktopLabel, lblDesktop, information.desktop);
    Show();
    foreground_.ForceForegroundWindow(handle());
  });
}

void frmSystemInformation::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void frmSystemInformation::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("303"));
    for (const Row& row : Rows()) row.caption.SetCaption(texts_.GetLocalizedString(row.text_id));
    cmdCopy.SetCaption(texts_.GetLocalizedString("302"));
    cmdClose.SetCaption(texts_.GetLocalizedString("183"));
  });
}

/// One line a row, as the window shows them.
void frmSystemInformation::cmdCopy_Click() {
  procedure_.Outermost("cmdCopy_Click", [&] {
    std::string text;
    for (const Row& row : Rows()) {
      if (!row.value.visible()) continue;
      text.append(row.caption.caption()).append(" ").append(row.value.caption()).append(core::kLineBreak);
    }
    clipboard_.SetText(text);
  });
}

void frmSystemInformation::cmdClose_Click() {
  procedure_.Outermost("cmdClose_Click", [&] { Hide(); });
}

}  // namespace kestro::management
