#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestro::contacts {

inline constexpr int kPhoneCount = 4;
inline constexpr int kUserFieldCount = 4;

/// One contact as CTIContacts exposes it. Texts are UTF-8; the arrays hold the
/// numbered properties (Phone[0] is `Phone1`).
struct Contact {
  std::int64_t id_Contact = 0;  // 0 = not stored yet
  std::string Name;
  std::string Company;
  std::string Position;
  std::array<std::string, kPhoneCount> Phone;
  std::array<std::string, kPhoneCount> SearchPhone;   // international form, what a caller id is compared with
  std::array<std::int64_t, kPhoneCount> PhoneType{};  // key of a phone type, 0 = none
  std::string Street;
  std::string City;
  std::string ZIPCode;
  std::string Country;
  std::string Email;
  std::string PicturePath;
  std::string Note;
  std::array<std::string, kUserFieldCount> UserField;

  friend bool operator==(const Contact&, const Contact&) = default;
};

/// Largest number of characters stored; longer input is cut from the right.
namespace DatabaseLength {
inline constexpr int kName = 200;
inline constexpr int kCompany = 200;
inline constexpr int kPosition = 200;
inline constexpr int kPhone = 50;
inline constexpr int kStreet = 100;
inline constexpr int kCity = 100;
inline constexpr int kZIPCode = 20;
inline constexpr int kCountry = 100;
inline constexpr int kEmail = 200;
inline constexpr int kUserField = 30;  // the first three; the fourth is stored uncut
inline constexpr int kPhoneTypeName = 20;
}  // namespace DatabaseLength

/// A text property by name, with its width (nothing = uncut).
struct TextProperty {
  std::string_view name;
  std::optional<int> width;
  std::string& (*of)(Contact&);
};

/// All text properties in the contact record's order, the search forms included.
[[nodiscard]] std::span<const TextProperty> TextProperties();

/// The contacts that matched a caller, in the order in which the database
/// delivered them; the pointer is empty for "nothing". Shared because the call
/// state and the call windows keep the same result.
using FoundContacts = std::shared_ptr<const std::vector<Contact>>;

struct PhoneType {
  std::int64_t id = 0;
  std::string name;
  std::int32_t Order = 0;
};

/// An extension of the exchange that calls can be transferred to.
struct PhoneLine {
  std::int64_t id = 0;
  std::string Line;  // whole number as text
  std::optional<std::string> Name;
};

using UserFieldNames = std::array<std::string, kUserFieldCount>;

}  // namespace kestro::contacts
