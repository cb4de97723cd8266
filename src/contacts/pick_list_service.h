#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ports/database.h"

namespace kestro::contacts {

/// Entries of the editor's pick lists.
class PickListService {
 public:
  explicit PickListService(ports::Database& database) : database_(database) {}
  void SetConnectionString(std::string_view text) { connection_string_ = text; }

  /// Field `Position`: the kept positions and those typed into contacts, each once, in text order.
  [[nodiscard]] std::unique_ptr<ports::Recordset> GetPositions();
  /// Field `Country`, likewise.
  [[nodiscard]] std::unique_ptr<ports::Recordset> GetCountries();

 private:
  ports::Database& database_;
  std::string connection_string_;
};

}  // namespace kestro::contacts
