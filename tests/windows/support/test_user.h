#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

namespace kestro::test {

/// The user that the tests play. All of it is refused (std::runtime_error) unless
/// KESTRO_TEST_USER is set: somebody's own settings and contacts are never touched.

/// Folder of the program under test: this test program lies in it.
[[nodiscard]] std::filesystem::path ProgramFolder();
[[nodiscard]] std::filesystem::path DatabaseFile();
/// As if the program had never been started, with this line chosen ("" = none).
void ResetUser(const std::string& phone_line);
/// Makes the user's database in advance, from an address-book script.
void MakeContacts(const std::string& script);
[[nodiscard]] std::optional<std::string> StoredSetting(const std::string& name);
/// A text below a root of the registry.
void WriteRegistry(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text);
void RemoveRegistryKey(HKEY root, const std::wstring& key);

}  // namespace kestro::test
