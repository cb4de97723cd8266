#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "contacts/contact.h"
#include "ports/database.h"

namespace kestro::contacts {

/// The user's names of the four custom fields, one record for the database.
class UserFieldService {
 public:
  explicit UserFieldService(ports::Database& database) : database_(database) {}
  void SetConnectionString(std::string_view text) { connection_string_ = text; }

  /// None while no names have been stored.
  [[nodiscard]] std::optional<UserFieldNames> GetUserFieldNames();
  /// Writes the one record, making it when there is none.
  void StoreUserFieldNames(const UserFieldNames& names);

 private:
  ports::Database& database_;
  std::string connection_string_;
};

}  // namespace kestro::contacts
