#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact.h"
#include "contacts/cti_contacts.h"
#include "core/contact_database_access.h"
#include "core/procedure_frame.h"
#include "core/shared_functions.h"
#include "ports/database.h"
#include "ports/file_system.h"

namespace kestro::contacts {

/// Where the contacts database lies: the path that the settings window shows.
class DatabasePathSource {
 public:
  virtual ~DatabasePathSource() = default;
  [[nodiscard]] virtual std::string DatabasePath() const = 0;
};

/// The way to the contacts database, the forms of a caller id, and the look-up
/// of a caller. Failures are logged and answered with a neutral value unless
/// told otherwise.
class ContactIntegrationModule final : public core::ContactDatabaseAccess {
 public:
  ContactIntegrationModule(core::LogModule& log, core::SharedFunctions& shared, ports::Database& database,
                           ports::FileSystem& files, const DatabasePathSource& path);

  /// The path goes in as it stands, unquoted.
  [[nodiscard]] std::string GetDatabaseConnectionString(std::string_view path);
  /// Connection string of the database in use.
  [[nodiscard]] std::string CurrentConnectionString();
  [[nodiscard]] std::string DatabasePath() const override { return path_.DatabasePath(); }
  [[nodiscard]] bool CheckAccessIntoContactDatabase(std::string_view path) override;
  [[nodiscard]] bool IsDatabaseReadOnly(std::string_view path) override;

  [[nodiscard]] std::string GetInternationalCallerId(std::string_view caller_id);
  [[nodiscard]] std::string GetInternationalCallerIdString(std::string_view text);
  /// Looks a caller up. The result goes to `found_contacts` and is kept for the
  /// call windows; after an error both stay as they were.
  bool CheckCallerIdInCRMDatabase(std::string_view caller_id, FoundContacts& found_contacts);
  /// Contacts of the last look-up.
  [[nodiscard]] const FoundContacts& CurrentCallers() const { return current_callers_; }

  /// All internal lines. Raises.
  [[nodiscard]] std::vector<PhoneLine> GetPhoneLinesList();
  /// "21 - Reception". Raises.
  [[nodiscard]] std::string GetMenuCaptionFromPhoneLine(const PhoneLine& line);

  /// A service of the contacts component, connected to the database in use.
  template <class Service>
  [[nodiscard]] Service Connected() {
    Service service(database_);
    service.SetConnectionString(CurrentConnectionString());
    return service;
  }

 private:
  void Probe(std::string_view path);

  core::ProcedureFrame procedure_;
  core::ProcedureFrame nameless_;  // GetInternationalCallerIdString logs without its module, on purpose
  core::SharedFunctions& shared_;
  ports::Database& database_;
  ports::FileSystem& files_;
  const DatabasePathSource& path_;
  FoundContacts current_callers_;
};

}  // namespace kestro::contacts
