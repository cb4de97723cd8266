#pragma once

#include <string>
#include <string_view>

#include "core/procedure_frame.h"
#include "ports/settings_store.h"

namespace kestro::core {

/// Names of the stored settings.
namespace SettingName {
inline constexpr std::string_view kDatabasePath = "DatabasePath";
inline constexpr std::string_view kLogIntoFile = "LogIntoFile";
inline constexpr std::string_view kAutomaticWindowPopUp = "AutomaticWindowPopUp";
inline constexpr std::string_view kAutomaticWindowHide = "AutomaticWindowHide";
inline constexpr std::string_view kPhoneLine = "PhoneLine";
}  // namespace SettingName

/// Key of all settings below the user's root.
inline constexpr std::string_view kSettingsKey = "Software\\Kestro\\CTI";

/// Reads and writes the named settings. A failing store is no error here: a
/// value that cannot be read is its default, and one that cannot be written
/// keeps what it was; both are noted in the log.
class RegistrySettingsModule {
 public:
  RegistrySettingsModule(LogModule& log, ports::SettingsStore& store)
      : procedure_(log, "KESTROCTI.RegistrySettingsModule", Spelling::kFullStop), store_(store) {}

  /// The stored value, or `fallback` when it is missing, empty or only spaces.
  [[nodiscard]] std::string GetRegistrySetting(std::string_view name, std::string_view fallback);
  void SaveRegistrySetting(std::string_view name, std::string_view value);

 private:
  void SetKeyValueAndCreatePath(std::string_view key, std::string_view name, std::string_view value);

  ProcedureFrame procedure_;
  ports::SettingsStore& store_;
};

}  // namespace kestro::core
