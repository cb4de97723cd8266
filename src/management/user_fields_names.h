#pragma once

#include <array>

#include "contacts/contact_integration_module.h"
#include "core/application_flags.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::management {

/// The user's names of the four custom fields.
class frmUserFieldsNames final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    contacts::ContactIntegrationModule& contacts;
  };
  frmUserFieldsNames(forms::FormHost& host, const Needs& needs);

  /// Loads the names and shows the window until it is closed.
  void Edit(forms::Form& owner);
  void BeforeShowForm();

  forms::Label lblUserField1{*this, nullptr, "lblUserField1"};
  forms::TextBox txtUserField1{*this, nullptr, "txtUserField1"};
  forms::Label lblUserField2{*this, nullptr, "lblUserField2"};
  forms::TextBox txtUserField2{*this, nullptr, "txtUserField2"};
  forms::Label lblUserField3{*this, nullptr, "lblUserField3"};
  forms::TextBox txtUserField3{*this, nullptr, "txtUserField3"};
  forms::Label lblUserField4{*this, nullptr, "lblUserField4"};
  forms::TextBox txtUserField4{*this, nullptr, "txtUserField4"};
  forms::Button OKButton{*this, nullptr, "OKButton", forms::Button::Role::kDefault};
  forms::Button CancelButton{*this, nullptr, "CancelButton", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_Unload() override;
  void GetFormTextTranslation();
  void LayOut();
  void OKButton_Click();
  void CancelButton_Click();

  core::ProcedureFrame procedure_;
  core::Messages& messages_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  contacts::ContactIntegrationModule& contacts_;
  const std::array<forms::TextBox*, contacts::kUserFieldCount> boxes_{&txtUserField1, &txtUserField2,
                                                                      &txtUserField3, &txtUserField4};
  const std::array<forms::Label*, contacts::kUserFieldCount> labels_{&lblUserField1, &lblUserField2,
                                                                     &lblUserField3, &lblUserField4};
};

}  // namespace kestro::management
