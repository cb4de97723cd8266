#include "contacts/user_field_service.h"

#include "contacts/database_session.h"

namespace kestro::contacts {

std::optional<UserFieldNames> UserFieldService::GetUserFieldNames() {
  DatabaseSession session(database_, connection_string_);
  const auto rows = session.Query("SELECT Field1, Field2, Field3, Field4 FROM UserFields");
  if (rows->AtEnd()) return std::nullopt;
  UserFieldNames names;
  int field = 0;
  for (auto& name : names) name = rows->Text(field++);
  return names;
}

void UserFieldService::StoreUserFieldNames(const UserFieldNames& names) {
  DatabaseSession session(database_, connection_string_);
  session.InTransaction([&] {
    session.Run("DELETE FROM UserFields");
    session.Run("INSERT INTO UserFields (Field1, Field2, Field3, Field4) VALUES (?, ?, ?, ?)",
                {names[0], names[1], names[2], names[3]});
  });
}

}  // namespace kestro::contacts
