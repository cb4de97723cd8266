#pragma once

#include <functional>

#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::reception {

/// The hidden window that carries the notification icon, its pop-up menu and
/// the four call buttons. Holds the controls; what they do is SystemTrayEvents.
class SystemTrayForm final : public forms::Form {
 public:
  SystemTrayForm(forms::FormHost& host, core::LogModule& log, core::Localization& texts);

  forms::MenuItem mPopupSys{*this, nullptr, "mPopupSys", forms::MenuItem::Role::kPopup};
  forms::MenuItem mPopRedirect{*this, &mPopupSys, "mPopRedirect"};
  /// Element 0 is a placeholder; the internal lines are numbered from 1.
  forms::MenuArray mnuRedirectList{*this, mPopRedirect, "mnuRedirectList"};
  forms::MenuItem mPopSettings{*this, &mPopupSys, "mPopSettings"};
  forms::MenuItem mPopStartStop{*this, &mPopupSys, "mPopStartStop"};
  forms::MenuItem mnuContactsList{*this, &mPopupSys, "mnuContactsList"};
  forms::MenuItem mnuSpacer{*this, &mPopupSys, "mnuSpacer", forms::MenuItem::Role::kSeparator};
  forms::MenuItem mAboutForm{*this, &mPopupSys, "mAboutForm"};
  forms::MenuItem mPopExit{*this, &mPopupSys, "mPopExit"};

  forms::Button btnIncomingCall{*this, nullptr, "btnIncomingCall"};
  forms::Button btnAcceptCall{*this, nullptr, "btnAcceptCall"};
  forms::Button btnDisconnectCall{*this, nullptr, "btnDisconnectCall"};
  forms::Button btnTransferCall{*this, nullptr, "btnTransferCall"};

  /// Plugged in by the application: what comes before anything is logged, and the rest of the start-up.
  forms::Handler on_loading;
  forms::Handler on_load;
  /// The window could not be loaded, and with it the application.
  std::function<void(const base::RuntimeError&)> on_load_failed;
  /// Plugged in by SystemTrayEvents.
  forms::Handler on_unload;

 private:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_Unload() override;
  void GetFormTextTranslation();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
};

}  // namespace kestro::reception
