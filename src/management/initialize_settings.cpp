#include "management/initialize_settings.h"

#include "base/text.h"

namespace kestro::management::Functions {

using core::SettingName::kAutomaticWindowHide;
using core::SettingName::kAutomaticWindowPopUp;
using core::SettingName::kDatabasePath;
using core::SettingName::kLogIntoFile;

void SettingsLoading::InitializeSettings() {
  procedure_("InitializeSettings", [&] {
    settings_.DBPathTextBox.SetText(registry_.GetRegistrySetting(kDatabasePath, ""));
    settings_.LogCheckBox.SetValue(CheckValue(kLogIntoFile, "0"));
    settings_.chkDisplayContactWindow.SetValue(CheckValue(kAutomaticWindowPopUp, "1"));
    settings_.chkHideContactWindow.SetValue(CheckValue(kAutomaticWindowHide, "1"));
    log_.SetFileLogging(settings_.LogCheckBox.value() == 1);
    if (!shell_.DoSupportTrayBaloon()) {
      // The contact window is then the only display of the caller.
      settings_.chkDisplayContactWindow.SetValue(1);
      settings_.chkDisplayContactWindow.SetEnabled(false);
    }
  });
}

/// A value that is no number counts as missing: a damaged setting must not keep
/// the application from starting.
int SettingsLoading::CheckValue(std::string_view name, std::string_view fallback) {
  const auto value = base::ParseInt32(registry_.GetRegistrySetting(name, fallback));
  return value ? *value : base::ToInt32(fallback);
}

}  // namespace kestro::management::Functions
