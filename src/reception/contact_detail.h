#pragma once

#include <array>
#include <map>
#include <string>

#include "contacts/contact_integration_module.h"
#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "management/edit_contact.h"
#include "reception/redirect_combo.h"

namespace kestro::reception {

/// The caller's card: one matching contact, with a selector when several match.
/// No procedure raises: an error is logged and leaves the card as far as it got.
class ContactDetail final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::Functions::ApplicationEnding& ending;
    contacts::ContactIntegrationModule& contacts;
    ports::FileSystem& files;
    Functions::InternalLines& lines;
    Functions::CallTransfer& transfer;
    management::frmEditContact& editor;
  };
  ContactDetail(forms::FormHost& host, const Needs& needs);

  void SetFoundContacts(contacts::FoundContacts found) { found_ = std::move(found); }
  void SetPhoneNumber(std::string_view number) { phone_number_ = number; }
  /// Fills the window from the two above.
  void BeforeShowControl();
  [[nodiscard]] RedirectCombo& redirect() { return redirect_; }

  using Role = forms::Label::Role;

  forms::Label lblPhoneNumberLabel{*this, nullptr, "lblPhoneNumberLabel"};
  forms::Label lblPhoneNumber{*this, nullptr, "lblPhoneNumber", Role::kHeading};
  forms::Label lblContact{*this, nullptr, "lblContact"};
  forms::ComboBox cmbContactSelector{*this, nullptr, "cmbContactSelector"};
  forms::TabPages contactPages{*this, nullptr, "contactPages", 5};

  forms::Frame frmContactInfo{*this, &contactPages.page(0), "frmContactInfo"};
  forms::Label lblNameLabel{*this, &frmContactInfo, "lblNameLabel"};
  forms::Label lblName{*this, &frmContactInfo, "lblName", Role::kValue};
  forms::Label lblCompanyLabel{*this, &frmContactInfo, "lblCompanyLabel"};
  forms::Label lblCompany{*this, &frmContactInfo, "lblCompany", Role::kValue};
  forms::Label lblPositionLabel{*this, &frmContactInfo, "lblPositionLabel"};
  forms::Label lblPosition{*this, &frmContactInfo, "lblPosition", Role::kValue};
  forms::Label lblEmailLabel{*this, &frmContactInfo, "lblEmailLabel"};
  forms::Label lblEmail{*this, &frmContactInfo, "lblEmail", Role::kValue};
  forms::Frame frmPicture{*this, &contactPages.page(0), "frmPicture"};
  forms::Picture ContactPicture{*this, &frmPicture, "ContactPicture"};

  forms::Frame PhonesPanel{*this, &contactPages.page(1), "PhonesPanel"};
  forms::Label lblPhone1Label{*this, &PhonesPanel, "lblPhone1Label"};
  forms::Label lblPhone1{*this, &PhonesPanel, "lblPhone1", Role::kValue};
  forms::Label lblPhone2Label{*this, &PhonesPanel, "lblPhone2Label"};
  forms::Label lblPhone2{*this, &PhonesPanel, "lblPhone2", Role::kValue};
  forms::Label lblPhone3Label{*this, &PhonesPanel, "lblPhone3Label"};
  forms::Label lblPhone3{*this, &PhonesPanel, "lblPhone3", Role::kValue};
  forms::Label lblPhone4Label{*this, &PhonesPanel, "lblPhone4Label"};
  forms::Label lblPhone4{*this, &PhonesPanel, "lblPhone4", Role::kValue};

  forms::Frame AddressPanel{*this, &contactPages.page(2), "AddressPanel"};
  forms::Label lblStreetLabel{*this, &AddressPanel, "lblStreetLabel"};
  forms::Label lblStreet{*this, &AddressPanel, "lblStreet", Role::kValue};
  forms::Label lblCityPanel{*this, &AddressPanel, "lblCityPanel"};
  forms::Label lblCity{*this, &AddressPanel, "lblCity", Role::kValue};
  forms::Label lblZIPCodeLabel{*this, &AddressPanel, "lblZIPCodeLabel"};
  forms::Label lblZIPCode{*this, &AddressPanel, "lblZIPCode", Role::kValue};
  forms::Label lblCountryLabel{*this, &AddressPanel, "lblCountryLabel"};
  forms::Label lblCountry{*this, &AddressPanel, "lblCountry", Role::kValue};

  forms::Frame NotePanel{*this, &contactPages.page(3), "NotePanel"};
  forms::TextBox txtNote{*this, &NotePanel, "txtNote", forms::TextBox::Lines::kMany};

  forms::Frame UserFieldsPanel{*this, &contactPages.page(4), "UserFieldsPanel"};
  forms::Label lblUserField1Label{*this, &UserFieldsPanel, "lblUserField1Label"};
  forms::Label lblUserField1{*this, &UserFieldsPanel, "lblUserField1", Role::kValue};
  forms::Label lblUserField2Label{*this, &UserFieldsPanel, "lblUserField2Label"};
  forms::Label lblUserField2{*this, &UserFieldsPanel, "lblUserField2", Role::kValue};
  forms::Label lblUserField3Label{*this, &UserFieldsPanel, "lblUserField3Label"};
  forms::Label lblUserField3{*this, &UserFieldsPanel, "lblUserField3", Role::kValue};
  forms::Label lblUserField4Label{*this, &UserFieldsPanel, "lblUserField4Label"};
  forms::TextBox txtUserField4{*this, &UserFieldsPanel, "txtUserField4", forms::TextBox::Lines::kMany};

  forms::ComboBox cmbRedirectTo{*this, nullptr, "cmbRedirectTo"};
  forms::Button cmdEdit{*this, nullptr, "cmdEdit"};
  forms::Button cmdNew{*this, nullptr, "cmdNew"};
  forms::Button cmdClose{*this, nullptr, "cmdClose", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void GetFormTextTranslation();
  void LayOut();
  void LayOutPages();
  void Connect();

  void LoadPhoneTypes();
  void FillFoundContactsCombo();
  void FillFormByContactData(const contacts::Contact& contact);
  void FillPhones(const contacts::Contact& contact);
  void FillUserFields(const contacts::Contact& contact);
  void ClearForm();
  [[nodiscard]] const contacts::Contact* SelectedContact() const;

  void cmbContactSelector_Change();
  void cmbRedirectTo_Click();
  void cmdEdit_Click();
  void cmdNew_Click();
  void cmdClose_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  core::Functions::ApplicationEnding& ending_;
  contacts::ContactIntegrationModule& contacts_;
  ports::FileSystem& files_;
  management::frmEditContact& editor_;
  RedirectCombo redirect_;

  /// Captions of the phones while their type is not known.
  static constexpr std::array<std::string_view, contacts::kPhoneCount> kPhoneTextIds = {"151", "152", "153",
                                                                                        "154"};

  contacts::FoundContacts found_;
  std::string phone_number_;
  std::map<std::string, std::string> phone_types_;  // type number as text -> name

  const std::array<forms::Label*, 4> phone_labels_{&lblPhone1Label, &lblPhone2Label, &lblPhone3Label,
                                                   &lblPhone4Label};
  const std::array<forms::Label*, 4> phones_{&lblPhone1, &lblPhone2, &lblPhone3, &lblPhone4};
  const std::array<forms::Label*, 4> user_field_labels_{&lblUserField1Label, &lblUserField2Label,
                                                        &lblUserField3Label, &lblUserField4Label};
  const std::array<forms::Label*, 3> user_fields_{&lblUserField1, &lblUserField2, &lblUserField3};
};

}  // namespace kestro::reception
