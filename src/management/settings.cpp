#include "management/settings.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 8100;  // twips
constexpr int kHeight = 4800;

}  // namespace

Settings::Settings(forms::FormHost& host, core::LogModule& log, core::Localization& texts)
    : Form(host, "Settings", kWidth, kHeight),
      procedure_(log, "KESTROCTI.Settings", core::Spelling::kFullStop),
      texts_(texts) {
  LayOut();
}

void Settings::LayOut() {
  DatabaseSettingsPanel.Place(DBServerLabel, {0, 0});
  DatabaseSettingsPanel.Place(DBPathTextBox, {0, 1});
  DatabaseSettingsPanel.Place(ChoosePathToDB, {0, 2});
  DatabaseSettingsPanel.GrowColumn(1);
  PhoneSettingsPanel.Place(LineLabel, {0, 0});
  PhoneSettingsPanel.Place(LinesCombo, {0, 1});
  PhoneSettingsPanel.GrowColumn(1);
  body().Place(DatabaseSettingsPanel, {0, 0, 1, 3});
  body().Place(PhoneSettingsPanel, {1, 0, 1, 3});
  body().Place(chkDisplayContactWindow, {2, 0, 1, 3});
  body().Place(chkHideContactWindow, {3, 0, 1, 3});
  body().Place(LogCheckBox, {4, 0, 1, 3});
  body().Place(OKButton, {6, 1});
  body().Place(CancelButton, {6, 2});
  body().GrowColumn(0);
  body().GrowRow(5);
  DBPathTextBox.SetNamedBy(DBServerLabel);
  LinesCombo.SetNamedBy(LineLabel);
}

void Settings::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void Settings::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("261"));
    DatabaseSettingsPanel.SetCaption(texts_.GetLocalizedString("262"));
    DBServerLabel.SetCaption(texts_.GetLocalizedString("263"));
    ChoosePathToDB.SetCaption(texts_.GetLocalizedString("264"));
    PhoneSettingsPanel.SetCaption(texts_.GetLocalizedString("265"));
    LineLabel.SetCaption(texts_.GetLocalizedString("266"));
    chkDisplayContactWindow.SetCaption(texts_.GetLocalizedString("267"));
    chkHideContactWindow.SetCaption(texts_.GetLocalizedString("268"));
    LogCheckBox.SetCaption(texts_.GetLocalizedString("269"));
    OKButton.SetCaption(texts_.GetLocalizedString("193"));
    CancelButton.SetCaption(texts_.GetLocalizedString("210"));
  });
}

}  // namespace kestro::management
