#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "contacts/close_recordset.h"
#include "contacts/contact_integration_module.h"
#include "core/application_flags.h"
#include "core/database_location.h"
#include "core/dialling.h"
#include "core/foreground.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "ports/file_system.h"
#include "ports/message_boxes.h"

namespace kestro::management {

/// The contact editor: a new contact, or one to be changed. The window's
/// controls and their layout are in edit_contact_layout.cpp, the way between
/// the controls and a contact in edit_contact_data.cpp.
class frmEditContact final : public forms::Form {
 public:
  enum class Mode { kNew = 0, kEdit = 1, kNewFromCall = 2 };

  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::ForceFore& foreground;
    core::Functions::DatabaseLocation& location;
    core::Dialling& dialling;
    contacts::ContactIntegrationModule& contacts;
    const contacts::DatabasePathSource& database;
    ports::FileSystem& files;
    ports::FileDialogs& file_dialogs;
  };
  frmEditContact(forms::FormHost& host, const Needs& needs);

  // What has been typed for another contact and is not stored is dropped only if
  // the user says so; otherwise the window stays as it is and comes to the front.

  // From the main window: modal.
  void EditNew(forms::Form& owner);
  void Edit(const contacts::Contact& contact, forms::Form& owner);
  // From a call window: beside the others.
  void EditBesideOthers(const contacts::Contact& contact);
  void EditNewBesideOthers(std::string_view phone);
  /// From an unknown call; without a number when the exchange gave none.
  void EditNewFromCall(const std::optional<std::string>& phone);

  /// A contact has been stored.
  forms::Handler on_stored;

  using Style = forms::ComboBox::Style;
  using Lines = forms::TextBox::Lines;

  forms::Frame ContactPanel{*this, nullptr, "ContactPanel"};
  forms::Label lblName{*this, &ContactPanel, "lblName"};
  forms::TextBox txtName{*this, &ContactPanel, "txtName"};
  forms::Label lblCompany{*this, &ContactPanel, "lblCompany"};
  forms::TextBox txtCompany{*this, &ContactPanel, "txtCompany"};
  forms::Label lblPosition{*this, &ContactPanel, "lblPosition"};
  forms::ComboBox cmbPosition{*this, &ContactPanel, "cmbPosition", Style::kEditable};
  forms::Label lblEmail{*this, &ContactPanel, "lblEmail"};
  forms::TextBox txtEmail{*this, &ContactPanel, "txtEmail"};

  forms::Frame PhonesPanel{*this, nullptr, "PhonesPanel"};
  forms::ComboBox cmbPhone1{*this, &PhonesPanel, "cmbPhone1"};
  forms::TextBox txtPhone1{*this, &PhonesPanel, "txtPhone1"};
  forms::Button btnMakeCallPhone1{*this, &PhonesPanel, "btnMakeCallPhone1"};
  forms::ComboBox cmbPhone2{*this, &PhonesPanel, "cmbPhone2"};
  forms::TextBox txtPhone2{*this, &PhonesPanel, "txtPhone2"};
  forms::Button btnMakeCallPhone2{*this, &PhonesPanel, "btnMakeCallPhone2"};
  forms::ComboBox cmbPhone3{*this, &PhonesPanel, "cmbPhone3"};
  forms::TextBox txtPhone3{*this, &PhonesPanel, "txtPhone3"};
  forms::Button btnMakeCallPhone3{*this, &PhonesPanel, "btnMakeCallPhone3"};
  forms::ComboBox cmbPhone4{*this, &PhonesPanel, "cmbPhone4"};
  forms::TextBox txtPhone4{*this, &PhonesPanel, "txtPhone4"};
  forms::Button btnMakeCallPhone4{*this, &PhonesPanel, "btnMakeCallPhone4"};

  forms::Frame AddressPanel{*this, nullptr, "AddressPanel"};
  forms::Label lblStreet{*this, &AddressPanel, "lblStreet"};
  forms::TextBox txtStreet{*this, &AddressPanel, "txtStreet"};
  forms::Label lblCity{*this, &AddressPanel, "lblCity"};
  forms::TextBox txtCity{*this, &AddressPanel, "txtCity"};
  forms::Label lblZIPCode{*this, &AddressPanel, "lblZIPCode"};
  forms::TextBox txtZIPCode{*this, &AddressPanel, "txtZIPCode"};
  forms::Label lblCountry{*this, &AddressPanel, "lblCountry"};
  forms::ComboBox cmbCountry{*this, &AddressPanel, "cmbCountry", Style::kEditable};

  forms::Frame NotePanel{*this, nullptr, "NotePanel"};
  forms::TextBox txtNote{*this, &NotePanel, "txtNote", Lines::kMany};

  forms::Frame Frame1{*this, nullptr, "Frame1"};
  forms::Label lblUserField1{*this, &Frame1, "lblUserField1"};
  forms::TextBox txtUserField1{*this, &Frame1, "txtUserField1"};
  forms::Label lblUserField2{*this, &Frame1, "lblUserField2"};
  forms::TextBox txtUserField2{*this, &Frame1, "txtUserField2"};
  forms::Label lblUserField3{*this, &Frame1, "lblUserField3"};
  forms::TextBox txtUserField3{*this, &Frame1, "txtUserField3"};
  forms::Label lblUserField4{*this, &Frame1, "lblUserField4"};
  forms::TextBox txtUserField4{*this, &Frame1, "txtUserField4", Lines::kMany};

  forms::Frame PicturePanel{*this, nullptr, "PicturePanel"};
  forms::Picture ContactPicture{*this, &PicturePanel, "ContactPicture"};
  forms::Button cmdChangePicture{*this, &PicturePanel, "cmdChangePicture"};
  forms::Button btnDeletePicture{*this, &PicturePanel, "btnDeletePicture"};

  forms::Button cmdOK{*this, nullptr, "cmdOK", forms::Button::Role::kDefault};
  forms::Button cmdCancel{*this, nullptr, "cmdCancel", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void GetFormTextTranslation();
  void LayOut();
  void Connect();

  void BeforeShowControl(Mode mode, const contacts::Contact& contact, std::string_view phone);
  void ShowBesideOthers();
  [[nodiscard]] std::vector<std::string> Entries() const;
  [[nodiscard]] bool MayShowAnother();
  void SetFieldMaxLengths();
  void FillUserFieldsNames();
  void FillTelephoneLists();
  [[nodiscard]] std::string GetPhoneTypeName(int phone);
  void NamePhone(int phone);
  void FillLists();
  void FillList(forms::ComboBox& list, std::unique_ptr<ports::Recordset> entries);
  void ClearFields();
  void LoadFieldsForContact(const contacts::Contact& contact);
  [[nodiscard]] contacts::Contact GetDataFromForm();
  [[nodiscard]] std::string StoredPicturePath();
  void CreateContact();
  void UpdateContact();
  [[nodiscard]] std::string GetPictureFilePath();

  void MakeCall(int phone);
  void cmdOK_Click();
  void cmdCancel_Click();
  void cmdChangePicture_Click();
  void btnDeletePicture_Click();

  core::ProcedureFrame procedure_;
  contacts::Functions::RecordsetClosing closing_;
  Needs needs_;
  Mode mode_ = Mode::kNew;
  contacts::Contact contact_;                    // being edited
  std::map<std::int64_t, int> phone_positions_;  // phone type id -> its place in the four lists
  std::vector<std::string> entries_shown_;       // before the user changed anything
  std::string picture_path_;                     // shown; a chosen file is copied when the contact is stored
  bool picture_chosen_ = false;

  const std::array<forms::ComboBox*, contacts::kPhoneCount> phone_types_{&cmbPhone1, &cmbPhone2, &cmbPhone3,
                                                                         &cmbPhone4};
  const std::array<forms::TextBox*, contacts::kPhoneCount> phones_{&txtPhone1, &txtPhone2, &txtPhone3,
                                                                   &txtPhone4};
  const std::array<forms::Button*, contacts::kPhoneCount> calls_{&btnMakeCallPhone1, &btnMakeCallPhone2,
                                                                 &btnMakeCallPhone3, &btnMakeCallPhone4};
  const std::array<forms::Label*, contacts::kUserFieldCount> user_field_labels_{
      &lblUserField1, &lblUserField2, &lblUserField3, &lblUserField4};
  const std::array<forms::TextBox*, contacts::kUserFieldCount> user_fields_{&txtUserField1, &txtUserField2,
                                                                            &txtUserField3, &txtUserField4};
};

}  // namespace kestro::management
