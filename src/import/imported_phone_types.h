#pragma once

#include <map>
#include <string>
#include <string_view>

#include "contacts/contact_integration_module.h"
#include "core/procedure_frame.h"

namespace kestro::import {

/// Telephone types by the names that an import file gives them, made when there
/// are none of the name. What was read from the database is kept until the
/// application ends or uses another database. Every procedure raises.
class ImportedPhoneTypes {
 public:
  ImportedPhoneTypes(core::LogModule& log, contacts::ContactIntegrationModule& contacts);

  /// Key of the type whose name is the first 20 characters of `name`; letter case
  /// is ignored, spaces count.
  [[nodiscard]] std::int64_t GetImportedPhoneType(std::string_view name);
  /// Whether GetImportedPhoneType would answer without a change to the database.
  [[nodiscard]] bool IsKnown(std::string_view name);
  /// Makes a type, its name without the spaces around it, and returns its key.
  std::int64_t CreateNewPhoneType(std::string_view name);
  /// Display position behind all known types; a fixed one far behind while they have not been read.
  [[nodiscard]] std::int32_t GetPhoneTypeOrder();

 private:
  void ReadOnce();
  /// The first one of a name stays.
  void Keep(std::string_view name, const contacts::PhoneType& type);

  core::ProcedureFrame procedure_;
  contacts::ContactIntegrationModule& contacts_;
  bool loaded_ = false;
  std::string database_path_;                         // of the database that was read
  std::map<std::string, contacts::PhoneType> types_;  // by name, letter case folded
  std::int32_t largest_order_ = 0;
};

}  // namespace kestro::import
