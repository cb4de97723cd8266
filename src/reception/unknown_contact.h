#pragma once

#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "management/edit_contact.h"
#include "reception/redirect_combo.h"

namespace kestro::reception {

/// Shown for an external caller whom the contacts database does not know.
class UnknownContact final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::Functions::ApplicationEnding& ending;
    Functions::InternalLines& lines;
    Functions::CallTransfer& transfer;
    management::frmEditContact& editor;
  };
  UnknownContact(forms::FormHost& host, const Needs& needs);

  void BeforeShowControl();
  [[nodiscard]] RedirectCombo& redirect() { return redirect_; }

  forms::Label lblPhoneNumberLabel{*this, nullptr, "lblPhoneNumberLabel"};
  forms::Label lblPhoneNumber{*this, nullptr, "lblPhoneNumber", forms::Label::Role::kHeading};
  forms::ComboBox cmbRedirectTo{*this, nullptr, "cmbRedirectTo"};
  forms::Button cmdNew{*this, nullptr, "cmdNew"};
  forms::Button cmdClose{*this, nullptr, "cmdClose", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void GetFormTextTranslation();
  void LayOut();
  void cmdNew_Click();
  void cmdClose_Click();
  void cmbRedirectTo_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  core::Functions::ApplicationEnding& ending_;
  management::frmEditContact& editor_;
  RedirectCombo redirect_;
};

}  // namespace kestro::reception
