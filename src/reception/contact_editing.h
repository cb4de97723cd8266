#pragma once

#include <optional>
#include <string>

#include "contacts/contact.h"

namespace kestro::reception {

/// What the call windows need of the contact editor. Errors are raised.
class ContactEditing {
 public:
  virtual ~ContactEditing() = default;
  virtual void EditContact(const contacts::Contact& contact) = 0;
  virtual void NewContact(std::string_view phone) = 0;
  /// From an unknown call; without a number when the exchange gave none.
  virtual void NewContactFromCall(const std::optional<std::string>& phone) = 0;
};

}  // namespace kestro::reception
