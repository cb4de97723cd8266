#include "base/text.h"
#include "management/edit_contact.h"

// The way from a contact and the database's lists into the controls and back.

namespace kestro::management {

using contacts::Contact;
namespace DatabaseLength = contacts::DatabaseLength;

void frmEditContact::SetFieldMaxLengths() {
  procedure_("SetFieldMaxLengths", [&] {
    txtName.SetMaxLength(DatabaseLength::kName);
    txtEmail.SetMaxLength(DatabaseLength::kEmail);
    for (forms::TextBox* phone : phones_) phone->SetMaxLength(DatabaseLength::kPhone);
    txtStreet.SetMaxLength(DatabaseLength::kStreet);
  });
}

void frmEditContact::FillUserFieldsNames() {
  procedure_("FillUserFieldsNames", [&] {
    const auto names = needs_.contacts.Connected<contacts::UserFieldService>().GetUserFieldNames();
    if (!names) return;
    for (std::size_t i = 0; i < names->size(); ++i) user_field_labels_[i]->SetCaption((*names)[i] + ":");
  });
}

void frmEditContact::FillTelephoneLists() {
  procedure_("FillTelephoneLists", [&] {
    const auto types = needs_.contacts.Connected<contacts::PhoneTypeService>().GetPhoneTypes();
    phone_positions_.clear();
    for (const auto& type : types) {
      phone_positions_.emplace(type.id, static_cast<int>(phone_positions_.size()));
    }
    for (std::size_t i = 0; i < phone_types_.size(); ++i) {
      phone_types_[i]->Clear();
      for (const auto& type : types) phone_types_[i]->AddItem(type.name);
      if (types.empty()) {
        phone_types_[i]->AddItem(needs_.texts.GetLocalizedString("159", {std::to_string(i + 1)}));
      }
    }
  });
}

/// Named after the type in the list beside the box, or numbered without one.
std::string frmEditContact::GetPhoneTypeName(int phone) {
  return procedure_("GetPhoneTypeName", [&] {
    const forms::ComboBox& types = *phone_types_.at(static_cast<std::size_t>(phone));
    const bool has_type = !phone_positions_.empty() && types.list_index() >= 0;
    return (has_type ? types.text() : needs_.texts.GetLocalizedString("159", {std::to_string(phone + 1)})) +
           " :";
  });
}

void frmEditContact::NamePhone(int phone) {
  phones_.at(static_cast<std::size_t>(phone))->SetSpokenName(GetPhoneTypeName(phone));
}

void frmEditContact::FillLists() {
  procedure_("FillLists", [&] {
    auto lists = needs_.contacts.Connected<contacts::PickListService>();
    FillList(cmbPosition, lists.GetPositions());
    FillList(cmbCountry, lists.GetCountries());
  });
}

void frmEditContact::FillList(forms::ComboBox& list, std::unique_ptr<ports::Recordset> entries) {
  list.Clear();
  for (; !entries->AtEnd(); entries->MoveNext()) list.AddItem(entries->Text(0));
  closing_.CloseRecordset(entries);
}

void frmEditContact::ClearFields() {
  procedure_("ClearFields", [&] { LoadFieldsForContact({}); });
}

void frmEditContact::LoadFieldsForContact(const Contact& contact) {
  procedure_("LoadFieldsForContact", [&] {
    txtName.SetText(contact.Name);
    txtCompany.SetText(contact.Company);
    cmbPosition.SetText(contact.Position);
    txtEmail.SetText(contact.Email);
    for (std::size_t i = 0; i < phones_.size(); ++i) {
      phones_[i]->SetText(contact.Phone[i]);
      const auto position = phone_positions_.find(contact.PhoneType[i]);
      phone_types_[i]->SetListIndex(position == phone_positions_.end() ? -1 : position->second);
      NamePhone(static_cast<int>(i));
    }
    txtStreet.SetText(contact.Street);
    txtCity.SetText(contact.City);
    txtZIPCode.SetText(contact.ZIPCode);
    cmbCountry.SetText(contact.Country);
    txtNote.SetText(contact.Note);
    for (std::size_t i = 0; i < user_fields_.size(); ++i) user_fields_[i]->SetText(contact.UserField[i]);
    picture_path_ = contact.PicturePath;
    picture_chosen_ = false;
    const bool shown = !picture_path_.empty() && needs_.files.FileExists(picture_path_);
    ContactPicture.SetFile(shown ? picture_path_ : std::string());
  });
}

/// Everything that the user can change, as it stands in the window.
std::vector<std::string> frmEditContact::Entries() const {
  std::vector<std::string> entries{txtName.text(),   txtCompany.text(), cmbPosition.text(), txtEmail.text(),
                                   txtStreet.text(), txtCity.text(),    txtZIPCode.text(),  cmbCountry.text(),
                                   txtNote.text(),   picture_path_};
  for (std::size_t i = 0; i < phones_.size(); ++i) {
    entries.push_back(phones_[i]->text());
    entries.push_back(std::to_string(phone_types_[i]->list_index()));
    entries.push_back(user_fields_[i]->text());
  }
  return entries;
}

/// Cutting to the stored widths is left to the contacts component, the search
/// forms excepted: they are made of what is stored.
Contact frmEditContact::GetDataFromForm() {
  return procedure_("GetDataFromForm", [&] {
    Contact contact = contact_;
    contact.Name = txtName.text();
    contact.Company = txtCompany.text();
    contact.Position = cmbPosition.text();
    contact.Email = txtEmail.text();
    for (std::size_t i = 0; i < phones_.size(); ++i) {
      contact.Phone[i] = base::FirstCharacters(phones_[i]->text(), DatabaseLength::kPhone);
      contact.SearchPhone[i] = needs_.contacts.GetInternationalCallerIdString(contact.Phone[i]);
      // A phone whose type is not in the list keeps its type until another one is chosen.
      const int chosen = phone_types_[i]->list_index();
      for (const auto& [id, position] : phone_positions_) {
        if (position == chosen) contact.PhoneType[i] = id;
      }
    }
    contact.Street = txtStreet.text();
    contact.City = txtCity.text();
    contact.ZIPCode = txtZIPCode.text();
    contact.Country = cmbCountry.text();
    contact.Note = txtNote.text();
    for (std::size_t i = 0; i < user_fields_.size(); ++i) contact.UserField[i] = user_fields_[i]->text();
    contact.PicturePath = StoredPicturePath();
    return contact;
  });
}

std::string frmEditContact::StoredPicturePath() {
  if (!picture_chosen_) return picture_path_;
  return needs_.location.CopyPictureToDestinationFolder(picture_path_, needs_.database.DatabasePath());
}

void frmEditContact::CreateContact() {
  procedure_("CreateContact",
             [&] { needs_.contacts.Connected<contacts::CTIContacts>().CreateContact(GetDataFromForm()); });
}

void frmEditContact::UpdateContact() {
  procedure_("UpdateContact",
             [&] { needs_.contacts.Connected<contacts::CTIContacts>().UpdateContact(GetDataFromForm()); });
}

}  // namespace kestro::management
