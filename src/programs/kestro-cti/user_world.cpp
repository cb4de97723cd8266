#include "programs/kestro-cti/user_world.h"

#include "adapters/posix/settings_file.h"
#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"
#include "core/registry_settings_module.h"
#include "ports/memory_settings_store.h"
#include "programs/kestro-cti/demo_address_book.h"

namespace kestro::programs {

UserWorld OwnWorld(const ports::Clock& clock, std::function<void(const std::string&)> report) {
  const std::string data_home = adapters::UserDataHome();
  if (!data_home.empty()) adapters::MakeFolders(data_home);
  return {data_home,
          std::make_unique<adapters::SettingsFile>(adapters::SettingsFilePath(), clock, std::move(report))};
}

UserWorld DemoWorld(const std::string& program_folder) {
  const std::string data_home = adapters::UserDataHome();
  if (data_home.empty()) throw base::RuntimeError(base::kPathNotFound, "There is no home folder");
  const std::string folder = data_home + "/kestro-cti/demo";
  PrepareDemoAddressBook(program_folder, folder);
  auto settings = std::make_unique<ports::MemorySettingsStore>();
  settings->CreateKey(core::kSettingsKey);
  settings->SetValue(core::kSettingsKey, core::SettingName::kPhoneLine, kExchangeLine);
  return {folder, std::move(settings)};
}

}  // namespace kestro::programs
