#pragma once

#include <cstdint>
#include <optional>

#include "contacts/contact_integration_module.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::management {

/// One internal line, new or to be changed.
class frmEditLine final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    contacts::ContactIntegrationModule& contacts;
  };
  frmEditLine(forms::FormHost& host, const Needs& needs);

  void EditNew(forms::Form& owner);
  void Edit(const contacts::PhoneLine& line, forms::Form& owner);

  forms::Label lblLine{*this, nullptr, "lblLine"};
  forms::TextBox txtLine{*this, nullptr, "txtLine"};
  forms::Label lblName{*this, nullptr, "lblName"};
  forms::TextBox txtName{*this, nullptr, "txtName"};
  forms::Button OKButton{*this, nullptr, "OKButton", forms::Button::Role::kDefault};
  forms::Button CancelButton{*this, nullptr, "CancelButton", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_Activate() override;
  void GetFormTextTranslation();
  void LayOut();
  void Show(const contacts::PhoneLine& line, forms::Form& owner);
  void OKButton_Click();
  void CancelButton_Click();
  [[nodiscard]] bool IsComplete();
  void Store(contacts::PhoneLineService& service);

  core::ProcedureFrame procedure_;
  core::Messages& messages_;
  core::Localization& texts_;
  contacts::ContactIntegrationModule& contacts_;
  std::int64_t id_ = 0;  // 0 = a new line
};

}  // namespace kestro::management
