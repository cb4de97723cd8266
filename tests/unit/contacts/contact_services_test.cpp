#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "contacts/cti_contacts.h"
#include "contacts/database_session.h"
#include "jet/error.h"
#include "unit/support/contacts_database.h"
#include "unit/support/faulty_files.h"

namespace kestro::contacts {
namespace {

class ContactServicesTest : public testing::Test {
 protected:
  template <typename Service>
  Service Make() {
    Service service(store_.database());
    service.SetConnectionString(store_.connection_string());
    return service;
  }
  void Run(std::string_view text) {
    DatabaseSession(store_.database(), store_.connection_string()).Run(text);
  }

  test_support::ContactsDatabase store_;
};

TEST_F(ContactServicesTest, LeavesTheUserFieldNamesWhenStoringFails) {
  test_support::FaultyFiles files(test_support::Files());
  auto database = test_support::MakeSqlite(files);
  UserFieldService service(database);
  service.SetConnectionString(store_.connection_string());
  const UserFieldNames names = {"1", "2", "3", "4"};
  service.StoreUserFieldNames(names);
  files.before_change = [] { throw jet::Error(jet::ErrorKind::kFileSystem, "disk full"); };
  EXPECT_THROW(service.StoreUserFieldNames({"refused", "", "", ""}), base::RuntimeError);
  files.before_change = [] {};
  EXPECT_EQ(service.GetUserFieldNames(), names);
}

}  // namespace
}  // namespace kestro::contacts
