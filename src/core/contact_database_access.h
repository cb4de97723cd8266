#pragma once

#include <string>
#include <string_view>

namespace kestro::core {

/// What the start checks ask about the contacts database. Answers false instead
/// of raising.
class ContactDatabaseAccess {
 public:
  virtual ~ContactDatabaseAccess() = default;
  /// Path of the database in use.
  [[nodiscard]] virtual std::string DatabasePath() const = 0;
  /// The database answers and has a table of contacts.
  [[nodiscard]] virtual bool CheckAccessIntoContactDatabase(std::string_view path) = 0;
  /// The file's read-only attribute is set; false for a missing file.
  [[nodiscard]] virtual bool IsDatabaseReadOnly(std::string_view path) = 0;
};

}  // namespace kestro::core
