#include "import/import_columns.h"

namespace kestro::import {
namespace {

using contacts::Contact;
using Kind = ImportColumn::Kind;
namespace Length = contacts::DatabaseLength;

template <std::string Contact::*Property>
constexpr ImportColumn Text(std::optional<int> width) {
  return {Kind::kText, [](Contact& contact) -> std::string& { return contact.*Property; }, width};
}

template <std::size_t Number>
constexpr ImportColumn UserField() {
  return {Kind::kText, [](Contact& contact) -> std::string& { return contact.UserField[Number]; },
          Length::kUserField};
}

constexpr ImportColumn Phone(std::size_t number) { return {.kind = Kind::kPhone, .number = number}; }

constexpr ImportColumn PhoneType(std::size_t number) { return {.kind = Kind::kPhoneType, .number = number}; }

constexpr ImportColumn kColumns[] = {
    Text<&Contact::Name>(Length::kName),
    Text<&Contact::Company>(Length::kCompany),
    Text<&Contact::Position>(Length::kPosition),
    Phone(0),
    Phone(1),
    Phone(2),
    Phone(3),
    PhoneType(0),
    PhoneType(1),
    PhoneType(2),
    PhoneType(3),
    Text<&Contact::Street>(Length::kStreet),
    Text<&Contact::City>(Length::kCity),
    Text<&Contact::ZIPCode>(Length::kZIPCode),
    Text<&Contact::Country>(Length::kCountry),
    Text<&Contact::Email>(Length::kEmail),
    {.kind = Kind::kPicture},
    Text<&Contact::Note>(std::nullopt),
    UserField<0>(),
    UserField<1>(),
    UserField<2>(),
    UserField<3>(),
};
static_assert(std::size(kColumns) + 1 == kMostFields);

}  // namespace

std::span<const ImportColumn> ImportColumns() { return kColumns; }

}  // namespace kestro::import
