#include "core/registry_settings_module.h"

#include "base/text.h"

namespace kestro::core {

std::string RegistrySettingsModule::GetRegistrySetting(std::string_view name, std::string_view fallback) {
  return procedure_.Outermost(
      "GetRegistrySetting",
      [&] {
        const std::string value = store_.QueryValue(kSettingsKey, name).value_or("");
        return std::string(base::OrDefault(value, fallback));
      },
      [&](const base::RuntimeError&) { return std::string(fallback); });
}

void RegistrySettingsModule::SaveRegistrySetting(std::string_view name, std::string_view value) {
  procedure_.Outermost("SaveRegistrySetting", [&] { SetKeyValueAndCreatePath(kSettingsKey, name, value); });
}

void RegistrySettingsModule::SetKeyValueAndCreatePath(std::string_view key, std::string_view name,
                                                      std::string_view value) {
  constexpr std::string_view kName = "SetKeyValueAndCreatePath";
  procedure_(kName, [&] {
    if (const auto code = store_.CreateKey(key); code != 0) {
      procedure_.Log(kName, "Key can not be created, error " + std::to_string(code));
    }
    if (const auto code = store_.SetValue(key, name, value); code != 0) {
      procedure_.Log(kName,
                     "Setting " + std::string(name) + " can not be saved, error " + std::to_string(code));
    }
  });
}

}  // namespace kestro::core
