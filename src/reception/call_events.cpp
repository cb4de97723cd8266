#include "reception/call_events.h"

namespace kestro::reception::Functions {

void CallEvents::SetCallButtons(bool incoming, bool accept, bool disconnect, bool transfer) {
  needs_.tray.btnIncomingCall.SetEnabled(incoming);
  needs_.tray.btnAcceptCall.SetEnabled(accept);
  needs_.tray.btnDisconnectCall.SetEnabled(disconnect);
  needs_.tray.btnTransferCall.SetEnabled(transfer);
}

bool CallEvents::DisplaysByItself() const { return needs_.settings.chkDisplayContactWindow.value() == 1; }

void CallEvents::OnIncommingCall() {
  procedure_("OnIncommingCall", [&] {
    SetCallButtons(false, true, true, false);
    needs_.flags.CallInProgress = true;
    // A call that is offered while another is open makes the card new.
    needs_.flags.ContactDetailShown = false;
    needs_.icon.ChangeTrayIconToRinging();
    needs_.tray.mPopStartStop.SetEnabled(true);
    if (needs_.line.CheckExternalCall()) AnnounceExternalCall();
  });
}

void CallEvents::AnnounceExternalCall() {
  if (needs_.line.call().CallerFound) {
    AnnounceKnownCaller();
  } else {
    AnnounceUnknownCaller();
  }
}

void CallEvents::AnnounceUnknownCaller() {
  if (DisplaysByItself()) {
    needs_.windows.ShowUnknownContactDialog(needs_.line.GetCurrentCallerID());
    return;
  }
  needs_.icon.ShowBaloonToolTip(needs_.texts.GetLocalizedString("279"),
                                needs_.texts.GetLocalizedString("282") + "  ");
  needs_.unknown.BeforeShowControl();
}

void CallEvents::AnnounceKnownCaller() {
  const contacts::FoundContacts& found = needs_.line.call().CallerContact;
  needs_.icon.ShowContactDataBaloon(found);
  if (DisplaysByItself()) {
    needs_.windows.ShowContactDetailDialog(found);
    return;
  }
  needs_.detail.Load();
  needs_.detail.SetFoundContacts(found);
  needs_.detail.SetPhoneNumber(needs_.line.GetCurrentCallerID());
  needs_.detail.BeforeShowControl();
}

void CallEvents::OnCallAccept() {
  procedure_("OnCallAccept", [&] {
    SetCallButtons(false, false, true, true);
    needs_.flags.CallAccepted = true;
    needs_.icon.ChangeTrayIconToAccepted();
    needs_.menu.EnableRedirectMenuItems();
    needs_.tray.mPopRedirect.SetEnabled(needs_.flags.RedirectAllowed);
    if (!needs_.line.CheckTransferedCall()) return;
    if (needs_.line.CheckExternalCall()) {
      AnnounceExternalCall();
    } else {
      AnnounceInternalCall();
    }
  });
}

void CallEvents::AnnounceInternalCall() {
  const std::string id = needs_.line.GetCurrentCallerID();
  const std::string name = needs_.lines.GetInternalCallerName(id);
  if (needs_.shell.DoSupportTrayBaloon()) {
    needs_.icon.ShowBaloonToolTip(needs_.texts.GetLocalizedString("280"), name.empty() ? " " + id : name);
  } else {
    needs_.windows.ShowInternallCalDialog(name.empty() ? id : name);
  }
}

void CallEvents::OnCallDisconnect() {
  procedure_("OnCallDisconnect", [&] {
    SetCallButtons(true, false, false, false);
    needs_.flags.CallInProgress = false;
    needs_.flags.CallAccepted = false;
    needs_.line.ClearCallerFound();
    needs_.flags.ContactDetailShown = false;
    if (needs_.settings.chkHideContactWindow.value() == 1) needs_.windows.HideAll();
    needs_.icon.ChangeTrayIconToIdle();
    needs_.icon.DeleteTrayBaloonTooltip();
    needs_.menu.DisableRedirectListItems();
  });
}

}  // namespace kestro::reception::Functions
