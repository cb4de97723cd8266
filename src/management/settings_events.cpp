#include "management/settings_events.h"

#include <utility>

#include "base/scope_value.h"
#include "base/text.h"

namespace kestro::management {

using core::Functions::StartFault;
using core::SettingName::kAutomaticWindowHide;
using core::SettingName::kAutomaticWindowPopUp;
using core::SettingName::kDatabasePath;
using core::SettingName::kLogIntoFile;
using core::SettingName::kPhoneLine;

SettingsEvents::SettingsEvents(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.Settings", core::Spelling::kFullStop), log_(needs.log), needs_(needs) {
  Settings& window = needs_.settings;
  window.on_activate = [this] { Form_Activate(); };
  window.on_query_unload = [this](bool& cancel, int mode) { Form_QueryUnload(cancel, mode); };
  window.ChoosePathToDB.on_click = [this] { ChoosePathToDB_Click(); };
  window.OKButton.on_click = [this] { OKButton_Click(); };
  window.CancelButton.on_click = [this] { CancelButton_Click(); };
}

void SettingsEvents::ShowModal(forms::Form* owner, StartFault fault, const std::string& message) {
  alert_message_ = message;
  show_message_and_preset_field_ = fault != StartFault::kNone;
  field_code_ = fault;
  const base::ScopeValue modal(needs_.flags.ModalDialogOpen, true);
  BeforeShowForm();
  needs_.settings.ShowModal(owner);
}

void SettingsEvents::BeforeShowForm() {
  procedure_("BeforeShowForm", [&] {
    kept_line_index_ = needs_.settings.LinesCombo.list_index();
    refused_path_ = false;
  });
}

/// Each fault leads to its field once: the user may go elsewhere afterwards.
void SettingsEvents::Form_Activate() {
  procedure_.Outermost("Form_Activate", [&] {
    if (std::exchange(refused_path_, false)) needs_.settings.DBPathTextBox.SetFocus();
    if (!std::exchange(show_message_and_preset_field_, false)) return;
    if (field_code_ == StartFault::kDatabasePath) needs_.settings.DBPathTextBox.SetFocus();
    if (field_code_ == StartFault::kTelephoneLine) needs_.settings.LinesCombo.SetFocus();
    if (!alert_message_.empty()) needs_.messages.ShowText(ports::kInformation, alert_message_);
  });
}

void SettingsEvents::ChoosePathToDB_Click() {
  procedure_.Outermost("ChoosePathToDB_Click", [&] {
    ports::FileDialogRequest request;
    request.filter = needs_.texts.GetLocalizedString("161") + " (*.mdb)|*.mdb|";
    request.default_extension = ".mdb";
    request.initial_path = needs_.settings.DBPathTextBox.text();
    if (const auto file = needs_.files.OpenFile(request)) needs_.settings.DBPathTextBox.SetText(*file);
  });
}

void SettingsEvents::OKButton_Click() {
  procedure_.Outermost("OKButton_Click", [&] {
    forms::TextBox& field = needs_.settings.DBPathTextBox;
    field.SetText(std::string(base::Trim(field.text())));
    const std::string path = base::ReplaceAll(field.text(), "/", "\\");
    if (Refuses(path)) {
      refused_path_ = true;
      field.SetFocus();
      return;
    }
    Save(path);
    if (refresh_main_window) refresh_main_window();
    needs_.settings.Hide();
  });
}

bool SettingsEvents::Refuses(const std::string& path) {
  if (!needs_.contacts.CheckAccessIntoContactDatabase(path)) {
    needs_.messages.Warning("145", {std::string(core::kLineBreak)});
    return true;
  }
  if (needs_.contacts.IsDatabaseReadOnly(path)) {
    needs_.messages.Notice("146", {std::string(core::kLineBreak)});
    return true;
  }
  return false;
}

void SettingsEvents::Save(const std::string& path) {
  const Settings& window = needs_.settings;
  SaveLine();
  needs_.registry.SaveRegistrySetting(kDatabasePath, path);
  needs_.settings.DBPathTextBox.SetText(path);
  needs_.flags.DatabaseAccessible = true;
  needs_.registry.SaveRegistrySetting(kAutomaticWindowPopUp,
                                      std::to_string(window.chkDisplayContactWindow.value()));
  needs_.registry.SaveRegistrySetting(kAutomaticWindowHide,
                                      std::to_string(window.chkHideContactWindow.value()));
  needs_.registry.SaveRegistrySetting(kLogIntoFile, std::to_string(window.LogCheckBox.value()));
  log_.SetFileLogging(window.LogCheckBox.value() == 1);
}

/// A device without a name is listed as "Unknown": it can be watched, but not remembered by its name.
void SettingsEvents::SaveLine() {
  const int chosen = needs_.settings.LinesCombo.list_index();
  if (chosen >= 0) needs_.line.SetCurrentLine(chosen);
  const std::string name(base::Trim(needs_.settings.LinesCombo.text()));
  if (!base::EqualIgnoringCase(name, "unknown")) needs_.registry.SaveRegistrySetting(kPhoneLine, name);
}

void SettingsEvents::CancelButton_Click() {
  procedure_.Outermost("CancelButton_Click", [&] {
    needs_.settings.Hide();
    needs_.loading.InitializeSettings();
    needs_.settings.LinesCombo.SetListIndex(kept_line_index_);
  });
}

void SettingsEvents::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (!needs_.ending.IsApplicationShutdown(unload_mode)) {
      cancel = true;
      CancelButton_Click();
    } else if (!needs_.flags.ShuttingDown) {
      needs_.ending.IsApplicationShutdown();
    }
  });
}

}  // namespace kestro::management
