#pragma once

#include <string_view>

#include "contacts/contact.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "core/shared_functions.h"
#include "core/shell_version.h"
#include "ports/ansi_code_page.h"
#include "ports/notification_area.h"
#include "reception/system_tray_form.h"

namespace kestro::reception::Functions {

/// The one notification icon: its images and its balloons. The record is filled
/// once and then changed field by field; what a call does not set keeps its last
/// value. No procedure raises: an error is logged, and what was on the screen
/// stays. What the shell answers is not looked at.
class TrayIcon {
 public:
  TrayIcon(core::LogModule& log, core::Localization& texts, core::SharedFunctions& shared,
           core::Functions::ShellVersion& shell, ports::NotificationArea& area,
           const ports::AnsiCodePage& code_page, SystemTrayForm& tray);

  void InitializeTrayIcon();
  /// The record's fields bound both texts: 256 and 64 characters.
  void ShowBaloonToolTip(std::string_view title, std::string_view text);
  void DeleteTrayBaloonTooltip();
  /// Names of the first three matching contacts.
  void ShowContactDataBaloon(const contacts::FoundContacts& found);
  void ChangeTrayIconToRinging();
  void ChangeTrayIconToAccepted();
  /// Also removes a balloon.
  void ChangeTrayIconToIdle();
  void ChangeTrayIconToStoppedApplication();
  void RemoveIcon();

  [[nodiscard]] const ports::NotificationRecord& TrayIconData() const { return TrayIconData_; }

 private:
  void ChangeIcon(std::string_view file);
  void RemoveBalloon();
  [[nodiscard]] ports::IconHandle LoadIcon(std::string_view file);

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::SharedFunctions& shared_;
  core::Functions::ShellVersion& shell_;
  ports::NotificationArea& area_;
  const ports::AnsiCodePage& code_page_;
  SystemTrayForm& tray_;
  ports::NotificationRecord TrayIconData_;
};

}  // namespace kestro::reception::Functions
