#include "contacts/pick_list_service.h"

#include "contacts/connected_recordset.h"

namespace kestro::contacts {

std::unique_ptr<ports::Recordset> PickListService::GetPositions() {
  return std::make_unique<ConnectedRecordset>(
      database_, connection_string_,
      "SELECT Position FROM (SELECT Position FROM Position UNION SELECT Position FROM Contact) "
      "WHERE Position <> '' ORDER BY Position COLLATE TextOrder");
}

std::unique_ptr<ports::Recordset> PickListService::GetCountries() {
  return std::make_unique<ConnectedRecordset>(
      database_, connection_string_,
      "SELECT Country FROM (SELECT Country FROM Country UNION SELECT Country FROM Contact) "
      "WHERE Country <> '' ORDER BY Country COLLATE TextOrder");
}

}  // namespace kestro::contacts
