#pragma once

namespace kestro::core {

/// Flags of the whole application, all false at the start. One instance, owned
/// by the application and changed by the procedures named.
struct ApplicationFlags {
  bool ApplicationStarted = false;      // monitoring runs: StartApplication, StopApplication
  bool DatabaseAccessible = false;      // the contacts database answered the last probe
  bool ModalDialogOpen = false;         // a modal dialog of ours is up: the tray icon stays quiet
  bool CallInProgress = false;          // offered and not yet disconnected: OnIncommingCall, OnCallDisconnect
  bool CallAccepted = false;            // connected and not yet disconnected: OnCallAccept, OnCallDisconnect
  bool ContactDetailShown = false;      // the card has been filled for the current call
  bool ShuttingDown = false;            // set once by the ending procedure, never cleared
  bool SettingsShownAtStartup = false;  // the settings window is up because a start check failed
  bool RedirectAllowed = false;         // the line's provider takes transfers: InitializeLine
};

}  // namespace kestro::core
