#include "contacts/contact_integration_module.h"

#include "base/text.h"
#include "contacts/caller_id.h"

namespace kestro::contacts {
namespace {

template <class Value>
auto Answer(Value value) {
  return [value](const base::RuntimeError&) { return value; };
}

}  // namespace

ContactIntegrationModule::ContactIntegrationModule(core::LogModule& log, core::SharedFunctions& shared,
                                                   ports::Database& database, ports::FileSystem& files,
                                                   const DatabasePathSource& path)
    : procedure_(log, "KESTROCTI.ContactIntegrationModule", core::Spelling::kFullStop),
      nameless_(log, "", core::Spelling::kBare),
      shared_(shared),
      database_(database),
      files_(files),
      path_(path) {}

std::string ContactIntegrationModule::GetDatabaseConnectionString(std::string_view path) {
  return procedure_.Outermost(
      "GetDatabaseConnectionString",
      [&] {
        return std::string(ports::kConnectionStringStart).append(path).append(ports::kConnectionStringEnd);
      },
      Answer(std::string()));
}

std::string ContactIntegrationModule::CurrentConnectionString() {
  return GetDatabaseConnectionString(path_.DatabasePath());
}

bool ContactIntegrationModule::CheckAccessIntoContactDatabase(std::string_view path) {
  return procedure_.Outermost(
      "CheckAccessIntoContactDatabase",
      [&] {
        Probe(path);
        return true;
      },
      Answer(false));
}

void ContactIntegrationModule::Probe(std::string_view path) {
  const auto connection = database_.CreateConnection();
  const auto command = database_.CreateCommand();
  connection->SetConnectionString(GetDatabaseConnectionString(path));
  connection->SetCursorLocation(ports::Connection::kUseServerCursor);
  connection->SetIsolationLevel(ports::Connection::kReadUncommitted);
  command->SetCommandType(ports::Command::kText);
  command->SetCommandText("SELECT COUNT(*) FROM Contact");
  connection->Open("", "", "", ports::Connection::kConnectUnspecified);
  command->SetActiveConnection(*connection);
  const auto recordset = command->Execute(ports::Command::kExecuteUnspecified);
  recordset->Close();
  connection->Close();
}

bool ContactIntegrationModule::IsDatabaseReadOnly(std::string_view path) {
  return procedure_.Outermost(
      "IsDatabaseReadOnly",
      [&] { return (files_.FileAttributes(path) & ports::FileSystem::kReadOnlyAttribute) != 0; },
      Answer(false));
}

std::string ContactIntegrationModule::GetInternationalCallerId(std::string_view caller_id) {
  return procedure_.Outermost(
      "GetInternationalCallerId", [&] { return InternationalCallerId(caller_id); }, Answer(std::string()));
}

std::string ContactIntegrationModule::GetInternationalCallerIdString(std::string_view text) {
  return nameless_.Outermost(
      "GetInternationalCallerIdString", [&] { return GetInternationalCallerId(WithoutSeparators(text)); },
      Answer(std::string()));
}

bool ContactIntegrationModule::CheckCallerIdInCRMDatabase(std::string_view caller_id,
                                                          FoundContacts& found_contacts) {
  return procedure_.Outermost(
      "CheckCallerIdInCRMDatabase",
      [&] {
        const std::string number = GetInternationalCallerId(caller_id);
        auto matches = Connected<CTIContacts>().FindContactsByPhone(number);
        found_contacts =
            matches.empty() ? nullptr : std::make_shared<const std::vector<Contact>>(std::move(matches));
        current_callers_ = found_contacts;
        return found_contacts != nullptr;
      },
      Answer(false));
}

std::vector<PhoneLine> ContactIntegrationModule::GetPhoneLinesList() {
  return procedure_("GetPhoneLinesList", [&] { return Connected<PhoneLineService>().GetPhoneLines(); });
}

std::string ContactIntegrationModule::GetMenuCaptionFromPhoneLine(const PhoneLine& line) {
  return procedure_("GetMenuCaptionFromPhoneLine",
                    [&] { return std::string(base::Trim(line.Line)) + " - " + shared_.Nz(line.Name, ""); });
}

}  // namespace kestro::contacts
