#include "reception/contact_detail.h"

namespace kestro::reception {
namespace {

constexpr int kWidth = 6260;  // twips
constexpr int kHeight = 5100;

}  // namespace

ContactDetail::ContactDetail(forms::FormHost& host, const Needs& needs)
    : Form(host, "ContactDetail", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.ContactDetail", core::Spelling::kBare),
      texts_(needs.texts),
      flags_(needs.flags),
      ending_(needs.ending),
      contacts_(needs.contacts),
      files_(needs.files),
      editor_(needs.editor),
      redirect_(cmbRedirectTo, needs.flags, needs.lines, needs.transfer) {
  LayOut();
  Connect();
  cmbRedirectTo.SetEnabled(false);
  txtNote.SetReadOnly(true);
  txtUserField4.SetReadOnly(true);
}

void ContactDetail::Connect() {
  cmbContactSelector.on_click = [this] { cmbContactSelector_Change(); };
  cmbRedirectTo.on_click = [this] { cmbRedirectTo_Click(); };
  cmdEdit.on_click = [this] { cmdEdit_Click(); };
  cmdNew.on_click = [this] { cmdNew_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
}

void ContactDetail::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void ContactDetail::BeforeShowControl() {
  procedure_.Outermost("BeforeShowControl", [&] {
    redirect_.SetReady(true);
    LoadPhoneTypes();
    FillFoundContactsCombo();
    if (!found_ || found_->empty()) {
      ClearForm();
    } else {
      FillFormByContactData(found_->front());
    }
    contactPages.SetTab(0);
  });
}

void ContactDetail::LoadPhoneTypes() {
  procedure_.Outermost("LoadPhoneTypes", [&] {
    phone_types_.clear();
    for (const auto& type : contacts_.Connected<contacts::PhoneTypeService>().GetPhoneTypes()) {
      phone_types_.emplace(std::to_string(type.id), type.name);
    }
  });
}

void ContactDetail::FillFoundContactsCombo() {
  procedure_.Outermost("FillFoundContactsCombo", [&] {
    cmbContactSelector.Clear();
    if (found_) {
      cmbContactSelector.SetVisible(true);
      lblContact.SetVisible(true);
      for (const auto& contact : *found_) cmbContactSelector.AddItem(contact.Name);
      if (!found_->empty()) cmbContactSelector.SetListIndex(0);
    }
    if (!found_ || found_->size() < 2) {
      cmbContactSelector.SetVisible(false);
      lblContact.SetVisible(false);
    }
  });
}

const contacts::Contact* ContactDetail::SelectedContact() const {
  const int index = cmbContactSelector.list_index();
  if (!found_ || index < 0 || index >= static_cast<int>(found_->size())) return nullptr;
  return &(*found_)[static_cast<std::size_t>(index)];
}

void ContactDetail::cmbContactSelector_Change() {
  procedure_.Outermost("cmbContactSelector_Change", [&] {
    if (const auto* contact = SelectedContact()) FillFormByContactData(*contact);
  });
}

void ContactDetail::FillFormByContactData(const contacts::Contact& contact) {
  procedure_.Outermost("FillFormByContactData", [&] {
    lblCity.SetCaption(contact.City);
    lblStreet.SetCaption(contact.Street);
    lblCountry.SetCaption(contact.Country);
    lblZIPCode.SetCaption(contact.ZIPCode);
    lblName.SetCaption(contact.Name);
    lblPosition.SetCaption(contact.Position);
    lblCompany.SetCaption(contact.Company);
    lblEmail.SetCaption(contact.Email);
    FillPhones(contact);
    txtNote.SetText(contact.Note);
    const bool has_picture = !contact.PicturePath.empty() && files_.FileExists(contact.PicturePath);
    ContactPicture.SetFile(has_picture ? contact.PicturePath : std::string());
    redirect_.EnableForCall();
    cmdEdit.SetEnabled(true);
    cmdClose.SetEnabled(true);
    lblPhoneNumber.SetCaption(phone_number_);
    FillUserFields(contact);
  });
}

void ContactDetail::FillPhones(const contacts::Contact& contact) {
  for (std::size_t i = 0; i < phones_.size(); ++i) {
    phones_[i]->SetCaption(contact.Phone[i]);
    const auto type = phone_types_.find(std::to_string(contact.PhoneType[i]));
    phone_labels_[i]->SetCaption(type == phone_types_.end() ? texts_.GetLocalizedString(kPhoneTextIds[i])
                                                            : type->second + ":");
  }
}

void ContactDetail::FillUserFields(const contacts::Contact& contact) {
  for (std::size_t i = 0; i < user_fields_.size(); ++i) user_fields_[i]->SetCaption(contact.UserField[i]);
  txtUserField4.SetText(contact.UserField.back());
  const auto names = contacts_.Connected<contacts::UserFieldService>().GetUserFieldNames();
  if (!names) return;
  for (std::size_t i = 0; i < names->size(); ++i) user_field_labels_[i]->SetCaption((*names)[i] + ":");
}

void ContactDetail::ClearForm() {
  procedure_.Outermost("ClearForm", [&] {
    for (forms::Label* label : {&lblPhoneNumber, &lblName, &lblCompany, &lblPosition, &lblEmail, &lblStreet,
                                &lblCity, &lblZIPCode, &lblCountry}) {
      label->SetCaption("");
    }
    for (forms::Label* label : phones_) label->SetCaption("");
    for (forms::Label* label : user_fields_) label->SetCaption("");
    txtNote.SetText("");
    txtUserField4.SetText("");
    ContactPicture.SetFile("");
  });
}

/// Logs under the name of the close button's handler; kept as it is.
void ContactDetail::cmbRedirectTo_Click() {
  procedure_.Outermost("cmdClose_Click", [&] { redirect_.Chosen(); });
}

/// A copy: the editor may ask something first, and a call that comes meanwhile makes the card new.
void ContactDetail::cmdEdit_Click() {
  procedure_.Outermost("cmdEdit_Click", [&] {
    if (const auto* contact = SelectedContact()) editor_.EditBesideOthers(contacts::Contact(*contact));
  });
}

void ContactDetail::cmdNew_Click() {
  procedure_.Outermost("cmdNew_Click",
                       [&] { editor_.EditNewBesideOthers(std::string(lblPhoneNumber.caption())); });
}

void ContactDetail::cmdClose_Click() {
  procedure_.Outermost("cmdClose_Click", [&] { Hide(); });
}

/// The card has no close path of its own besides its button: any other unload
/// ends the application, unlike the window of an unknown caller.
void ContactDetail::Form_QueryUnload(bool& /*cancel*/, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (ending_.IsApplicationShutdown(unload_mode) && flags_.ShuttingDown) return;
    ending_.IsApplicationShutdown();
  });
}

}  // namespace kestro::reception
