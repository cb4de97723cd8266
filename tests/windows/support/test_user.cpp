#include "windows/support/test_user.h"

#include <cstdlib>
#include <stdexcept>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/win32/code_page.h"
#include "adapters/win32/registry_settings.h"
#include "adapters/win32/user_folders.h"
#include "adapters/win32/wide_text.h"
#include "scenario/address_book.h"

namespace kestro::test {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kSettingsKey = L"Software\\Kestro\\CTI";

void RequireTestUser() {
  if (std::getenv("KESTRO_TEST_USER") == nullptr) throw std::runtime_error("KESTRO_TEST_USER is not set");
}

fs::path DataFolder() { return fs::path(::_wgetenv(L"APPDATA")) / "KESTRO"; }

}  // namespace

fs::path ProgramFolder() { return adapters::ToWide(adapters::ProgramFolder()); }

fs::path DatabaseFile() { return DataFolder() / "KESTROCTI" / "CTIDB.mdb"; }

void ResetUser(const std::string& phone_line) {
  RequireTestUser();
  RemoveRegistryKey(HKEY_CURRENT_USER, kSettingsKey);
  ::SetFileAttributesW(DatabaseFile().c_str(), FILE_ATTRIBUTE_NORMAL);
  fs::remove_all(DataFolder());
  if (!phone_line.empty())
    WriteRegistry(HKEY_CURRENT_USER, kSettingsKey, L"PhoneLine", adapters::ToWide(phone_line));
}

void MakeContacts(const std::string& script) {
  RequireTestUser();
  fs::create_directories(DatabaseFile().parent_path());
  fs::copy_file(ProgramFolder() / "DBTemplate.tpl", DatabaseFile());
  adapters::SystemFileLayer files;
  adapters::SqliteDatabase database(files, [](std::string_view) { return DatabaseFile(); });
  scenario::LoadAddressBook(
      script, database,
      std::string(ports::kConnectionStringStart).append("test").append(ports::kConnectionStringEnd));
}

std::optional<std::string> StoredSetting(const std::string& name) {
  const adapters::SystemCodePage code_page;
  adapters::RegistrySettings settings(code_page);
  return settings.QueryValue(R"(Software\Kestro\CTI)", name);
}

void WriteRegistry(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text) {
  RequireTestUser();
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  const LSTATUS status = ::RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, text.c_str(), size);
  if (status != ERROR_SUCCESS) throw std::runtime_error("the registry refuses " + adapters::ToUtf8(key));
}

void RemoveRegistryKey(HKEY root, const std::wstring& key) {
  RequireTestUser();
  ::RegDeleteTreeW(root, key.c_str());
}

}  // namespace kestro::test
