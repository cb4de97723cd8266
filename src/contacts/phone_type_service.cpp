#include "contacts/phone_type_service.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "contacts/database_session.h"

namespace kestro::contacts {
namespace {

std::int32_t ToOrder(std::int64_t value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace

std::vector<PhoneType> PhoneTypeService::GetPhoneTypes() {
  DatabaseSession session(database_, connection_string_);
  std::vector<PhoneType> types;
  const auto rows = session.Query(R"(SELECT id, name, "Order" FROM PhoneType ORDER BY "Order", id)");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    types.push_back({rows->Integer(0), std::string(rows->Text(1)), ToOrder(rows->Integer(2))});
  }
  return types;
}

std::int64_t PhoneTypeService::AddPhoneType(const PhoneType& type) {
  DatabaseSession session(database_, connection_string_);
  const auto name = base::FirstCharacters(type.name, DatabaseLength::kPhoneTypeName);
  return session.Insert(R"(INSERT INTO PhoneType (name, "Order") VALUES (?, ?))", {name, type.Order});
}

}  // namespace kestro::contacts
