#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "ports/database.h"

namespace kestro::contacts {

/// Kinds of telephone ("work", "mobile", ...).
class PhoneTypeService {
 public:
  explicit PhoneTypeService(ports::Database& database) : database_(database) {}
  void SetConnectionString(std::string_view text) { connection_string_ = text; }

  /// By `Order`, then by key.
  [[nodiscard]] std::vector<PhoneType> GetPhoneTypes();
  /// Stores a new type, its name cut to its width, and returns its key.
  std::int64_t AddPhoneType(const PhoneType& type);

 private:
  ports::Database& database_;
  std::string connection_string_;
};

}  // namespace kestro::contacts
