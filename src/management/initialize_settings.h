#pragma once

#include "core/procedure_frame.h"
#include "core/registry_settings_module.h"
#include "core/shell_version.h"
#include "management/settings.h"

namespace kestro::management::Functions {

/// Loads the stored settings into the settings window.
class SettingsLoading {
 public:
  SettingsLoading(core::LogModule& log, core::RegistrySettingsModule& registry,
                  core::Functions::ShellVersion& shell, Settings& settings)
      : log_(log),
        procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop),
        registry_(registry),
        shell_(shell),
        settings_(settings) {}

  /// Also switches file logging, and takes the choice of automatic display away
  /// where balloons cannot announce a caller. Raises.
  void InitializeSettings();

 private:
  [[nodiscard]] int CheckValue(std::string_view name, std::string_view fallback);

  core::LogModule& log_;
  core::ProcedureFrame procedure_;
  core::RegistrySettingsModule& registry_;
  core::Functions::ShellVersion& shell_;
  Settings& settings_;
};

}  // namespace kestro::management::Functions
