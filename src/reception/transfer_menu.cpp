#include "reception/transfer_menu.h"

namespace kestro::reception::Functions {

TransferMenu::TransferMenu(core::LogModule& log, core::Localization& texts, core::ApplicationFlags& flags,
                           contacts::ContactIntegrationModule& contacts, management::frmMainForm& main_form,
                           SystemTrayForm& tray, ContactDetail& detail, UnknownContact& unknown)
    : procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop),
      texts_(texts),
      flags_(flags),
      contacts_(contacts),
      main_form_(main_form),
      tray_(tray),
      detail_(detail),
      unknown_(unknown) {}

void TransferMenu::SetTrayIconMenuForStartedApplication() {
  procedure_("SetTrayIconMenuForStartedApplication", [&] { SetTrayIconMenu(true); });
}

void TransferMenu::SetTrayIconMenuForStoppedApplication() {
  procedure_("SetTrayIconMenuForStoppedApplication", [&] { SetTrayIconMenu(false); });
}

void TransferMenu::SetTrayIconMenu(bool started) {
  tray_.mPopExit.SetEnabled(true);
  tray_.mPopSettings.SetEnabled(true);
  tray_.mPopStartStop.SetEnabled(true);
  tray_.mPopStartStop.SetChecked(started);
  DisableRedirectListItems();
}

void TransferMenu::SetMainFormMenuForStartedApplication() {
  procedure_("SetMainFormMenuForStartedApplication", [&] { SetMainFormMenu(); });
}

void TransferMenu::SetMainFormMenuForStoppedApplication() {
  procedure_("SetMainFormMenuForStoppedApplication", [&] { SetMainFormMenu(); });
}

/// The way out stays open in both states.
void TransferMenu::SetMainFormMenu() {
  main_form_.mnuExit.SetEnabled(true);
  DisableRedirectListItems();
}

void TransferMenu::SetTrayFormForStartedApplication() {
  procedure_("SetTrayFormForStartedApplication", [&] {
    tray_.btnIncomingCall.SetEnabled(true);
    tray_.btnAcceptCall.SetEnabled(false);
    tray_.btnDisconnectCall.SetEnabled(false);
    tray_.btnTransferCall.SetEnabled(false);
  });
}

void TransferMenu::SetTrayFormForStoppedApplication() {
  procedure_("SetTrayFormForStoppedApplication", [&] {
    tray_.btnIncomingCall.SetEnabled(false);
    tray_.btnAcceptCall.SetEnabled(false);
    tray_.btnDisconnectCall.SetEnabled(false);
    tray_.btnTransferCall.SetEnabled(false);
  });
}

void TransferMenu::EnableRedirectMenuItems() {
  procedure_("EnableRedirectMenuItems", [&] { SetRedirectEnabled(flags_.RedirectAllowed); });
}

void TransferMenu::DisableRedirectListItems() {
  procedure_("DisableRedirectListItems", [&] { SetRedirectEnabled(false); });
}

void TransferMenu::SetRedirectEnabled(bool enabled) {
  for (int index = 0; index < tray_.mnuRedirectList.count(); ++index) {
    tray_.mnuRedirectList.at(index).SetEnabled(enabled);
  }
  detail_.cmbRedirectTo.SetEnabled(enabled);
  unknown_.cmbRedirectTo.SetEnabled(enabled);
}

void TransferMenu::PopulateTransferSubmenuData() {
  procedure_("PopulateTransferSubmenuData", [&] {
    const auto lines = contacts_.GetPhoneLinesList();
    ClearLines();
    for (const auto& line : lines) AddLine(line);
    tray_.mnuRedirectList.at(0).SetVisible(lines.empty());
    filled_ = true;
  });
}

void TransferMenu::RepopulateTransferSubmenuData() {
  procedure_("RepopulateTransferSubmenuData", [&] {
    if (filled_) PopulateTransferSubmenuData();
  });
}

void TransferMenu::ClearLines() {
  tray_.mnuRedirectList.UnloadAllButFirst();
  const std::string prompt = texts_.GetLocalizedString("150");
  detail_.redirect().Restart(prompt);
  unknown_.redirect().Restart(prompt);
}

void TransferMenu::AddLine(const contacts::PhoneLine& line) {
  const std::string caption = contacts_.GetMenuCaptionFromPhoneLine(line);
  forms::MenuItem& item = tray_.mnuRedirectList.LoadNext();
  item.SetCaption(caption);
  // As the entry that is there from the start: a list that changes during a call stays usable.
  item.SetEnabled(tray_.mnuRedirectList.at(0).enabled());
  item.SetVisible(true);
  detail_.redirect().AddLine(caption);
  unknown_.redirect().AddLine(caption);
}

}  // namespace kestro::reception::Functions
