#include "forms/labelled_rows.h"
#include "reception/contact_detail.h"

// Where the controls of the card stand, and their captions.

namespace kestro::reception {
namespace {

constexpr std::array kUserFieldTexts = {"155", "156", "157", "158"};
constexpr std::array kPageTexts = {"185", "186", "187", "188", "189"};

}  // namespace

void ContactDetail::LayOut() {
  body().Place(lblPhoneNumberLabel, {0, 0});
  body().Place(lblPhoneNumber, {0, 1, 1, 4});
  body().Place(lblContact, {1, 0});
  body().Place(cmbContactSelector, {1, 1, 1, 4});
  body().Place(contactPages, {2, 0, 1, 5});
  body().Place(cmbRedirectTo, {3, 0, 1, 2});
  body().Place(cmdEdit, {3, 2});
  body().Place(cmdNew, {3, 3});
  body().Place(cmdClose, {3, 4});
  body().GrowColumn(1);
  body().GrowRow(2);
  lblPhoneNumber.SetNamedBy(lblPhoneNumberLabel);
  cmbContactSelector.SetNamedBy(lblContact);
  LayOutPages();
}

void ContactDetail::LayOutPages() {
  const auto fill_page = [this](int index, forms::Control& control, int column = 0) {
    contactPages.page(index).Place(control, {0, column});
    contactPages.page(index).GrowColumn(0);
    contactPages.page(index).GrowRow(0);
  };
  fill_page(0, frmContactInfo);
  fill_page(0, frmPicture, 1);
  fill_page(1, PhonesPanel);
  fill_page(2, AddressPanel);
  fill_page(3, NotePanel);
  fill_page(4, UserFieldsPanel);

  frmContactInfo.GrowRow(PlaceRows(frmContactInfo, {{lblNameLabel, lblName},
                                                    {lblCompanyLabel, lblCompany},
                                                    {lblPositionLabel, lblPosition},
                                                    {lblEmailLabel, lblEmail}}));
  frmPicture.Place(ContactPicture, {0, 0});
  PhonesPanel.GrowRow(PlaceRows(PhonesPanel, {{lblPhone1Label, lblPhone1},
                                              {lblPhone2Label, lblPhone2},
                                              {lblPhone3Label, lblPhone3},
                                              {lblPhone4Label, lblPhone4}}));
  AddressPanel.GrowRow(PlaceRows(AddressPanel, {{lblStreetLabel, lblStreet},
                                                {lblCityPanel, lblCity},
                                                {lblZIPCodeLabel, lblZIPCode},
                                                {lblCountryLabel, lblCountry}}));
  NotePanel.Place(txtNote, {0, 0});
  UserFieldsPanel.GrowRow(PlaceRows(UserFieldsPanel, {{lblUserField1Label, lblUserField1},
                                                      {lblUserField2Label, lblUserField2},
                                                      {lblUserField3Label, lblUserField3},
                                                      {lblUserField4Label, txtUserField4}}));
}

void ContactDetail::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    const auto set = [this](forms::CaptionedControl& control, std::string_view text_id) {
      control.SetCaption(texts_.GetLocalizedString(text_id));
    };
    SetCaption(texts_.GetLocalizedString("190"));
    set(lblPhoneNumberLabel, "175");
    set(lblContact, "176");
    set(lblNameLabel, "177");
    set(lblCompanyLabel, "178");
    set(lblPositionLabel, "179");
    set(lblEmailLabel, "180");
    set(cmdNew, "181");
    set(cmdEdit, "182");
    set(cmdClose, "183");
    set(frmPicture, "184");
    set(lblStreetLabel, "206");
    set(lblCityPanel, "207");
    set(lblZIPCodeLabel, "208");
    set(lblCountryLabel, "209");
    for (std::size_t i = 0; i < kUserFieldTexts.size(); ++i) {
      set(*phone_labels_[i], kPhoneTextIds[i]);
      set(*user_field_labels_[i], kUserFieldTexts[i]);
    }
    for (std::size_t i = 0; i < kPageTexts.size(); ++i) {
      contactPages.SetTabCaption(static_cast<int>(i), texts_.GetLocalizedString(kPageTexts[i]));
    }
  });
}

}  // namespace kestro::reception
