#pragma once

#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::reception {

/// Shows who calls from inside the exchange where no balloon can.
class InternalCall final : public forms::Form {
 public:
  InternalCall(forms::FormHost& host, core::LogModule& log, core::Localization& texts);

  forms::Label lblPhoneNumberLabel{*this, nullptr, "lblPhoneNumberLabel"};
  forms::Label lblCaller{*this, nullptr, "lblCaller", forms::Label::Role::kValue};
  forms::Button CancelButton{*this, nullptr, "CancelButton", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void GetFormTextTranslation();
  void CancelButton_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
};

}  // namespace kestro::reception
