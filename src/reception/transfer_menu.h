#pragma once

#include "contacts/contact_integration_module.h"
#include "core/application_flags.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "management/main_form.h"
#include "reception/contact_detail.h"
#include "reception/system_tray_form.h"
#include "reception/unknown_contact.h"

namespace kestro::reception::Functions {

/// The states of the tray menu and the call buttons, and the internal lines in
/// the transfer menu and in the redirect combos of the call windows. Raises.
class TransferMenu {
 public:
  TransferMenu(core::LogModule& log, core::Localization& texts, core::ApplicationFlags& flags,
               contacts::ContactIntegrationModule& contacts, management::frmMainForm& main_form,
               SystemTrayForm& tray, ContactDetail& detail, UnknownContact& unknown);

  void SetTrayIconMenuForStartedApplication();
  void SetTrayIconMenuForStoppedApplication();
  /// The main window looks the same while monitoring runs and while it does not.
  void SetMainFormMenuForStartedApplication();
  void SetMainFormMenuForStoppedApplication();
  void SetTrayFormForStartedApplication();
  void SetTrayFormForStoppedApplication();
  /// The items and both combos take RedirectAllowed.
  void EnableRedirectMenuItems();
  void DisableRedirectListItems();
  void PopulateTransferSubmenuData();
  /// After the internal lines changed; fills only what has been filled before.
  void RepopulateTransferSubmenuData();

 private:
  void SetTrayIconMenu(bool started);
  void SetMainFormMenu();
  void SetRedirectEnabled(bool enabled);
  void ClearLines();
  void AddLine(const contacts::PhoneLine& line);

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  contacts::ContactIntegrationModule& contacts_;
  management::frmMainForm& main_form_;
  SystemTrayForm& tray_;
  ContactDetail& detail_;
  UnknownContact& unknown_;
  bool filled_ = false;
};

}  // namespace kestro::reception::Functions
