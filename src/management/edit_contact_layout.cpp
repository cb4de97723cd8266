#include "forms/labelled_rows.h"
#include "management/edit_contact.h"

// Where the editor's controls stand, and their captions.

namespace kestro::management {
void frmEditContact::LayOut() {
  PlaceRows(ContactPanel,
            {{lblName, txtName}, {lblCompany, txtCompany}, {lblPosition, cmbPosition}, {lblEmail, txtEmail}});
  for (std::size_t i = 0; i < phones_.size(); ++i) {
    const int row = static_cast<int>(i);
    PhonesPanel.Place(*phone_types_[i], {row, 0});
    PhonesPanel.Place(*phones_[i], {row, 1});
    PhonesPanel.Place(*calls_[i], {row, 2});
    phone_types_[i]->SetNamedBy(PhonesPanel);
  }
  PhonesPanel.GrowColumn(1);
  PlaceRows(AddressPanel,
            {{lblStreet, txtStreet}, {lblCity, txtCity}, {lblZIPCode, txtZIPCode}, {lblCountry, cmbCountry}});
  NotePanel.Place(txtNote, {0, 0});
  PlaceRows(Frame1, {{lblUserField1, txtUserField1},
                     {lblUserField2, txtUserField2},
                     {lblUserField3, txtUserField3},
                     {lblUserField4, txtUserField4}});
  PicturePanel.Place(ContactPicture, {0, 0, 3, 1});
  PicturePanel.Place(cmdChangePicture, {0, 1});
  PicturePanel.Place(btnDeletePicture, {1, 1});
  PicturePanel.GrowColumn(0);
  PicturePanel.GrowRow(2);

  body().Place(ContactPanel, {0, 0});
  body().Place(PhonesPanel, {0, 1, 1, 3});
  body().Place(AddressPanel, {1, 0});
  body().Place(Frame1, {1, 1, 1, 3});
  body().Place(NotePanel, {2, 0});
  body().Place(PicturePanel, {2, 1, 1, 3});
  body().Place(cmdOK, {3, 2});
  body().Place(cmdCancel, {3, 3});
  body().GrowColumn(0);
  body().GrowRow(2);
}

void frmEditContact::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    const auto set = [this](forms::CaptionedControl& control, std::string_view text_id) {
      control.SetCaption(needs_.texts.GetLocalizedString(text_id));
    };
    constexpr std::array kUserFieldTexts = {"155", "156", "157", "158"};
    SetCaption(needs_.texts.GetLocalizedString("198"));
    set(ContactPanel, "199");
    set(lblName, "177");
    set(lblCompany, "178");
    set(lblPosition, "179");
    set(lblEmail, "180");
    set(PhonesPanel, "200");
    for (forms::Button* call : calls_) set(*call, "201");
    set(NotePanel, "202");
    set(Frame1, "203");
    for (std::size_t i = 0; i < user_field_labels_.size(); ++i)
      set(*user_field_labels_[i], kUserFieldTexts[i]);
    set(PicturePanel, "184");
    set(cmdChangePicture, "204");
    set(btnDeletePicture, "205");
    set(AddressPanel, "187");
    set(lblStreet, "206");
    set(lblCity, "207");
    set(lblZIPCode, "208");
    set(lblCountry, "209");
    set(cmdOK, "193");
    set(cmdCancel, "210");
  });
}

}  // namespace kestro::management
