#include "contacts/contact.h"

namespace kestro::contacts {
namespace {

using DatabaseLength::kPhone;
using DatabaseLength::kUserField;

template <std::string Contact::*Member>
std::string& Plain(Contact& contact) {
  return contact.*Member;
}

template <auto Member, std::size_t Index>
std::string& Numbered(Contact& contact) {
  return (contact.*Member)[Index];
}

constexpr std::array kTextProperties = {
    TextProperty{"Name", DatabaseLength::kName, Plain<&Contact::Name>},
    TextProperty{"Company", DatabaseLength::kCompany, Plain<&Contact::Company>},
    TextProperty{"Position", DatabaseLength::kPosition, Plain<&Contact::Position>},
    TextProperty{"Phone1", kPhone, Numbered<&Contact::Phone, 0>},
    TextProperty{"Phone2", kPhone, Numbered<&Contact::Phone, 1>},
    TextProperty{"Phone3", kPhone, Numbered<&Contact::Phone, 2>},
    TextProperty{"Phone4", kPhone, Numbered<&Contact::Phone, 3>},
    TextProperty{"SearchPhone1", kPhone, Numbered<&Contact::SearchPhone, 0>},
    TextProperty{"SearchPhone2", kPhone, Numbered<&Contact::SearchPhone, 1>},
    TextProperty{"SearchPhone3", kPhone, Numbered<&Contact::SearchPhone, 2>},
    TextProperty{"SearchPhone4", kPhone, Numbered<&Contact::SearchPhone, 3>},
    TextProperty{"Street", DatabaseLength::kStreet, Plain<&Contact::Street>},
    TextProperty{"City", DatabaseLength::kCity, Plain<&Contact::City>},
    TextProperty{"ZIPCode", DatabaseLength::kZIPCode, Plain<&Contact::ZIPCode>},
    TextProperty{"Country", DatabaseLength::kCountry, Plain<&Contact::Country>},
    TextProperty{"Email", DatabaseLength::kEmail, Plain<&Contact::Email>},
    TextProperty{"PicturePath", std::nullopt, Plain<&Contact::PicturePath>},
    TextProperty{"Note", std::nullopt, Plain<&Contact::Note>},
    TextProperty{"UserField1", kUserField, Numbered<&Contact::UserField, 0>},
    TextProperty{"UserField2", kUserField, Numbered<&Contact::UserField, 1>},
    TextProperty{"UserField3", kUserField, Numbered<&Contact::UserField, 2>},
    TextProperty{"UserField4", std::nullopt, Numbered<&Contact::UserField, 3>},
};

}  // namespace

std::span<const TextProperty> TextProperties() { return kTextProperties; }

}  // namespace kestro::contacts
