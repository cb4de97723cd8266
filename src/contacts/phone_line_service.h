#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "ports/database.h"

namespace kestro::contacts {

/// Internal lines of the exchange.
class PhoneLineService {
 public:
  explicit PhoneLineService(ports::Database& database) : database_(database) {}
  void SetConnectionString(std::string_view text) { connection_string_ = text; }

  /// By number, then by key.
  [[nodiscard]] std::vector<PhoneLine> GetPhoneLines();
  /// The same lines as a recordset with the fields id, Line and Name.
  [[nodiscard]] std::unique_ptr<ports::Recordset> ListPhoneLines();
  std::int64_t AddPhoneLine(const PhoneLine& line);
  /// Raises when the line does not exist any more.
  void UpdatePhoneLine(const PhoneLine& line);
  void DeletePhoneLine(const PhoneLine& line);

 private:
  ports::Database& database_;
  std::string connection_string_;
};

}  // namespace kestro::contacts
