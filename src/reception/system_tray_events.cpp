#include "reception/system_tray_events.h"

#include "base/text.h"
#include "ports/notification_area.h"

namespace kestro::reception {
namespace {

constexpr std::string_view kTestCaller = "112";
constexpr std::string_view kTestDestination = "0";

}  // namespace

SystemTrayEvents::SystemTrayEvents(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.SystemTrayForm", core::Spelling::kFullStop), needs_(needs) {
  SystemTrayForm& tray = needs_.tray;
  tray.mnuRedirectList.on_click = [this](int index) { mnuRedirectList_Click(index); };
  tray.mPopStartStop.on_click = [this] { mPopStartStop_Click(); };
  tray.mPopSettings.on_click = [this] { mPopSettings_Click(); };
  tray.mnuContactsList.on_click = [this] { mnuContactsList_Click(); };
  tray.mAboutForm.on_click = [this] { mAboutForm_Click(); };
  tray.mPopExit.on_click = [this] { mPopExit_Click(); };
  tray.btnIncomingCall.on_click = [this] { btnIncomingCall_Click(); };
  tray.btnAcceptCall.on_click = [this] { btnAcceptCall_Click(); };
  tray.btnDisconnectCall.on_click = [this] { btnDisconnectCall_Click(); };
  tray.btnTransferCall.on_click = [this] { btnTransferCall_Click(); };
  tray.on_unload = [this] { needs_.icon.RemoveIcon(); };
}

void SystemTrayEvents::Form_MouseMove(int /*button*/, int /*shift*/, int x, int /*y*/) {
  procedure_.Outermost("Form_MouseMove", [&] {
    switch (static_cast<std::uint32_t>(x)) {
      case ports::kRightButtonUp:
        return needs_.tray.host().PopupMenu(needs_.tray, needs_.tray.mPopupSys);
      case ports::kLeftButtonUp:
      case ports::kLeftDoubleClick:
      case ports::kBalloonUserClick:
        if (needs_.flags.DatabaseAccessible && !needs_.flags.ModalDialogOpen) OpenWhatMatters();
        return;
      default:
        return;
    }
  });
}

void SystemTrayEvents::OpenWhatMatters() {
  if (!needs_.flags.CallInProgress) return needs_.main_form.BringUp();
  if (!needs_.line.CheckExternalCall()) return OpenInternalCall();
  if (needs_.line.call().CallerFound) {
    needs_.windows.ShowContactDetailDialog(needs_.contacts.CurrentCallers());
  } else {
    needs_.windows.ShowUnknownContactDialog(needs_.line.GetCurrentCallerID());
  }
}

void SystemTrayEvents::OpenInternalCall() {
  if (needs_.shell.DoSupportTrayBaloon()) return;  // the balloon has announced it
  const std::string id = needs_.line.GetCurrentCallerID();
  const std::string name = needs_.lines.GetInternalCallerName(id);
  needs_.windows.ShowInternallCalDialog(name.empty() ? id : name);
}

void SystemTrayEvents::mnuRedirectList_Click(int index) {
  procedure_.Outermost("mnuRedirectList_Click", [&] {
    const std::string& caption = needs_.tray.mnuRedirectList.at(index).caption();
    needs_.transfer.OnCallTransfer(needs_.lines.GetInternalListCallerId(base::Trim(caption)));
  });
}

/// A start that fails for a setting opens the settings at it, once.
void SystemTrayEvents::StartOrAskForSettings() {
  auto fault = core::Functions::StartFault::kNone;
  std::string message;
  needs_.lifecycle.StartApplication(fault, message);
  if (fault != core::Functions::StartFault::kNone) needs_.settings.ShowModal(nullptr, fault, message);
}

/// The menu works while the settings are open; monitoring rests until they are
/// closed, and they are opened once. Brings them to the front.
bool SystemTrayEvents::SettingsAreOpen() {
  if (!needs_.settings.open()) return false;
  needs_.settings.BringForward();
  return true;
}

void SystemTrayEvents::mPopStartStop_Click() {
  procedure_.Outermost("mPopStartStop_Click", [&] {
    if (SettingsAreOpen()) return;
    if (needs_.flags.ApplicationStarted) {
      needs_.lifecycle.StopApplication();
    } else {
      StartOrAskForSettings();
    }
  });
}

void SystemTrayEvents::mPopSettings_Click() {
  procedure_.Outermost("mPopSettings_Click", [&] {
    if (SettingsAreOpen()) return;
    if (needs_.flags.ApplicationStarted) needs_.lifecycle.StopApplication();
    if (needs_.main_form.visible()) needs_.main_form.SetWindowState(forms::WindowState::kNormal);
    needs_.settings.ShowModal(&needs_.main_form);
    StartOrAskForSettings();
  });
}

void SystemTrayEvents::mnuContactsList_Click() {
  procedure_.Outermost("mnuContactsList_Click", [&] { needs_.main_form.ShowInFront(); });
}

void SystemTrayEvents::mAboutForm_Click() {
  procedure_.Outermost("mAboutForm_Click", [&] { needs_.about.BringUp(); });
}

void SystemTrayEvents::mPopExit_Click() {
  procedure_.Outermost("mPopExit_Click", [&] { needs_.ending.IsApplicationShutdown(); });
}

void SystemTrayEvents::btnIncomingCall_Click() {
  procedure_.Outermost("btnIncomingCall_Click", [&] {
    contacts::FoundContacts found;
    needs_.contacts.CheckCallerIdInCRMDatabase(kTestCaller, found);
    needs_.events.OnIncommingCall();
  });
}

void SystemTrayEvents::btnAcceptCall_Click() {
  procedure_.Outermost("btnAcceptCall_Click", [&] { needs_.events.OnCallAccept(); });
}

void SystemTrayEvents::btnDisconnectCall_Click() {
  procedure_.Outermost("btnDisconnectCall_Click", [&] { needs_.events.OnCallDisconnect(); });
}

void SystemTrayEvents::btnTransferCall_Click() {
  procedure_.Outermost("btnTransferCall_Click", [&] { needs_.transfer.OnCallTransfer(kTestDestination); });
}

}  // namespace kestro::reception
