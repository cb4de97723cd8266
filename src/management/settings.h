#pragma once

#include <functional>
#include <string>

#include "contacts/contact_integration_module.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "telephony/line_event_receiver.h"

namespace kestro::management {

/// The settings window. Loaded at the start and never unloaded while the
/// application runs: its controls hold the settings for the whole application.
class Settings final : public forms::Form, public contacts::DatabasePathSource, public telephony::LineList {
 public:
  Settings(forms::FormHost& host, core::LogModule& log, core::Localization& texts);

  [[nodiscard]] std::string DatabasePath() const override { return DBPathTextBox.text(); }
  void ClearLines() override { LinesCombo.Clear(); }
  void AddLine(std::string_view name) override { LinesCombo.AddItem(name); }
  void SelectLine(std::int32_t index) override { LinesCombo.SetListIndex(index); }

  forms::Frame DatabaseSettingsPanel{*this, nullptr, "DatabaseSettingsPanel"};
  forms::Label DBServerLabel{*this, &DatabaseSettingsPanel, "DBServerLabel"};
  forms::TextBox DBPathTextBox{*this, &DatabaseSettingsPanel, "DBPathTextBox"};
  forms::Button ChoosePathToDB{*this, &DatabaseSettingsPanel, "ChoosePathToDB"};
  forms::Frame PhoneSettingsPanel{*this, nullptr, "PhoneSettingsPanel"};
  forms::Label LineLabel{*this, &PhoneSettingsPanel, "LineLabel"};
  forms::ComboBox LinesCombo{*this, &PhoneSettingsPanel, "LinesCombo"};
  forms::CheckBox chkDisplayContactWindow{*this, nullptr, "chkDisplayContactWindow"};
  forms::CheckBox chkHideContactWindow{*this, nullptr, "chkHideContactWindow"};
  forms::CheckBox LogCheckBox{*this, nullptr, "LogCheckBox"};
  forms::Button OKButton{*this, nullptr, "OKButton", forms::Button::Role::kDefault};
  forms::Button CancelButton{*this, nullptr, "CancelButton", forms::Button::Role::kCancel};

  /// Plugged in by SettingsEvents.
  forms::Handler on_activate;
  std::function<void(bool& cancel, int unload_mode)> on_query_unload;

 private:
  void Form_Load() override;
  void Form_Activate() override {
    if (on_activate) on_activate();
  }
  void Form_QueryUnload(bool& cancel, int unload_mode) override {
    if (on_query_unload) on_query_unload(cancel, unload_mode);
  }
  void GetFormTextTranslation();
  void LayOut();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
};

}  // namespace kestro::management
