#include "app/application.h"

#include "app/startup.h"
#include "contacts/contact_integration_module.h"
#include "core/application_ending.h"
#include "core/database_location.h"
#include "core/dialling.h"
#include "core/foreground.h"
#include "core/help_pages.h"
#include "core/lifecycle.h"
#include "core/localization.h"
#include "core/log_module.h"
#include "core/masking_log.h"
#include "core/messages.h"
#include "core/registry_settings_module.h"
#include "core/shared_functions.h"
#include "core/shell_version.h"
#include "generated/version.h"
#include "import/contact_import_progress.h"
#include "import/contacts_import.h"
#include "management/about_form.h"
#include "management/contact_list.h"
#include "management/edit_contact.h"
#include "management/edit_line.h"
#include "management/initialize_settings.h"
#include "management/link_dialling.h"
#include "management/main_form.h"
#include "management/phone_lines_list.h"
#include "management/settings.h"
#include "management/settings_events.h"
#include "management/system_information_form.h"
#include "management/user_fields_names.h"
#include "reception/call_events.h"
#include "reception/call_transfer.h"
#include "reception/call_windows.h"
#include "reception/contact_detail.h"
#include "reception/internal_call.h"
#include "reception/internal_lines.h"
#include "reception/system_tray_events.h"
#include "reception/system_tray_form.h"
#include "reception/transfer_menu.h"
#include "reception/tray_icon.h"
#include "reception/unknown_contact.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::app {
/// All modules, each behind those that it uses. Where the line events, further
/// down, call the call events, further up, or the lifecycle the windows, the
/// call goes through this object.
struct Application::Modules final : telephony::LineEventReceiver, core::Functions::LifecycleDisplay {
  explicit Modules(const Ports& given) : ports(given) {}

  // --- telephony::LineEventReceiver ---
  void OnIncommingCall() override { events.OnIncommingCall(); }
  void OnCallAccept() override { events.OnCallAccept(); }
  void OnCallDisconnect() override { events.OnCallDisconnect(); }
  std::string GetInternalCallerName(std::string_view caller_id) override {
    return lines.GetInternalCallerName(caller_id);
  }
  void ShowBaloonToolTip(std::string_view title, std::string_view text) override {
    icon.ShowBaloonToolTip(title, text);
  }
  bool DoSupportTrayBaloon() override { return shell.DoSupportTrayBaloon(); }
  void ShowInternallCalDialog(std::string_view caller) override {
    call_windows.ShowInternallCalDialog(caller);
  }
  void ShutDownApplication(const base::RuntimeError& error) override { ending.ShutDownApplication(error); }

  // --- core::Functions::LifecycleDisplay ---
  void SetTrayIconMenuForStartedApplication() override { menu.SetTrayIconMenuForStartedApplication(); }
  void SetTrayFormForStartedApplication() override { menu.SetTrayFormForStartedApplication(); }
  void SetMainFormMenuForStartedApplication() override { menu.SetMainFormMenuForStartedApplication(); }
  void SetTrayIconMenuForStoppedApplication() override { menu.SetTrayIconMenuForStoppedApplication(); }
  void SetTrayFormForStoppedApplication() override { menu.SetTrayFormForStoppedApplication(); }
  void SetMainFormMenuForStoppedApplication() override { menu.SetMainFormMenuForStoppedApplication(); }
  void ChangeTrayIconToIdle() override { icon.ChangeTrayIconToIdle(); }
  void ChangeTrayIconToStoppedApplication() override { icon.ChangeTrayIconToStoppedApplication(); }
  void DeleteTrayBaloonTooltip() override { icon.DeleteTrayBaloonTooltip(); }
  void PopulateTransferSubmenuData() override { menu.PopulateTransferSubmenuData(); }
  void mnuExit_Click() override { main_form.mnuExit.Click(); }

  Ports ports;
  core::ApplicationFlags flags;
  core::MaskingLog masking_log{ports.log, ports.settings};
  core::LogModule log{masking_log};
  core::Localization texts{log};
  core::Messages messages{texts, ports.boxes};
  core::SharedFunctions shared{log, ports.files};
  core::RegistrySettingsModule registry{log, ports.settings};
  core::Functions::DatabaseLocation location{log, messages, shared, registry, ports.files, ports.process};
  core::Functions::ShellVersion shell{log, ports.shell};
  core::ForceFore foreground{log, ports.foreground};
  core::Dialling dialling{ports.dialling};
  core::HelpPages help{log, shared, ports.shell_execute};
  management::Settings settings{ports.windows, log, texts};
  management::Functions::SettingsLoading settings_loading{log, registry, shell, settings};
  contacts::ContactIntegrationModule contacts{log, shared, ports.database, ports.files, settings};
  telephony::TAPIFunctionsModule line{
      {log, messages, texts, registry, flags, ports.line, ports.code_page, contacts, *this, settings}};
  core::Functions::ApplicationEnding ending{log, messages, line, ports.windows, ports.process, flags};
  management::frmMainForm main_form{ports.windows, {log, texts, flags, ending, foreground}};
  reception::SystemTrayForm tray{ports.windows, log, texts};
  reception::Functions::InternalLines lines{log, tray};
  reception::Functions::TrayIcon icon{log, texts, shared, shell, ports.notification_area, ports.code_page,
                                      tray};
  reception::Functions::CallTransfer transfer{log, messages, line};
  management::frmEditContact editor{ports.windows,
                                    {log, messages, texts, flags, foreground, location, dialling, contacts,
                                     settings, ports.files, ports.file_dialogs}};
  reception::ContactDetail detail{
      ports.windows, {log, texts, flags, ending, contacts, ports.files, lines, transfer, editor}};
  reception::UnknownContact unknown{ports.windows, {log, texts, flags, ending, lines, transfer, editor}};
  reception::InternalCall internal{ports.windows, log, texts};
  reception::Functions::CallWindows call_windows{log,  texts,  flags,   foreground,
                                                 line, detail, unknown, internal};
  reception::Functions::TransferMenu menu{log, texts, flags, contacts, main_form, tray, detail, unknown};
  reception::Functions::CallEvents events{
      {log, texts, flags, shell, settings, line, tray, lines, icon, menu, call_windows, detail, unknown}};
  core::Functions::Lifecycle lifecycle{{log, messages, texts, flags, line, contacts, ports.instances, *this}};
  management::frmSystemInformation system_information{ports.windows,
                                                      {log, texts, foreground, ports.clipboard}};
  management::frmAbout about{ports.windows,
                             {log, texts, messages, foreground, ports.system_information, system_information,
                              kProductName, kVersion}};
  management::SettingsEvents settings_events{{log, messages, texts, flags, registry, ending, foreground,
                                              settings_loading, contacts, line, ports.file_dialogs,
                                              settings}};
  reception::SystemTrayEvents tray_events{{log, flags, shell, ending, contacts, line, lifecycle, main_form,
                                           settings_events, about, tray, lines, transfer, icon, call_windows,
                                           events}};
  Startup startup{{log, messages, shared, flags, location, ending, lifecycle, contacts, line,
                   settings_loading, settings, settings_events, main_form, tray, icon,
                   ports.notification_area, ports.files}};
  management::frmUserFieldsNames user_fields{ports.windows, {log, messages, texts, flags, contacts}};
  management::frmEditLine edit_line{ports.windows, {log, messages, texts, contacts}};
  management::frmPhoneLinesList phone_lines{ports.windows,
                                            {log, messages, texts, shared, contacts, edit_line}};
  management::ContactList list{{log, messages, flags, shared, lifecycle, dialling, contacts, main_form,
                                editor, user_fields, phone_lines}};
  management::LinkDialling link_dialling{{log, messages, flags, dialling}};
  import::frmContactImportProgress import_progress{ports.windows, { log, messages, texts, flags, ending }};
  import::ContactsImport contacts_import{
      { log,
        messages,
        texts,
        location,
        contacts,
        ports.files,
        ports.file_dialogs,
        ports.code_page,
        ports.clock,
        import_progress }};
  /// The ending unloads these; the about window takes the system information along.
  std::vector<forms::Form*> ending_forms{&main_form,   &tray,      &settings,        &detail,
                                         &unknown,     &internal,  &editor,          &user_fields,
                                         &phone_lines, &edit_line, &import_progress, &about};
  std::vector<forms::Form*> forms = [this] {
    std::vector<forms::Form*> all = ending_forms;
    all.push_back(&system_information);
    return all;
  }();
};

Application::Application(const Ports& ports) : modules_(std::make_unique<Modules>(ports)) {
  Modules& m = *modules_;
  m.editor.on_stored = [&m] { m.list.Refresh(); };
  m.settings_events.refresh_main_window = [&m] { m.list.Refresh(); };
  m.list.on_phone_lines_changed = [&m] { m.menu.RepopulateTransferSubmenuData(); };
  m.list.on_help = [&m] { m.help.Open(); };
  m.list.on_about = [&m] { m.about.BringUp(); };
  m.list.on_import = [&m] { m.import_progress.Import(m.main_form); };
  m.ending.SetForms(m.ending_forms);
  modules_->ports.notification_area.SetCallback([modules = modules_.get()](std::uint32_t code) {
    modules->tray_events.Form_MouseMove(0, 0, static_cast<int>(code), 0);
  });
}

Application::~Application() { modules_->ports.notification_area.SetCallback({}); }

void Application::Start() {
  modules_->main_form.Load();
  modules_->link_dialling.AskAfterStart();
}

void Application::Activate() {
  if (!modules_->flags.ModalDialogOpen) modules_->main_form.BringUp();
}

void Application::DialLink(std::string_view number) { modules_->link_dialling.DialLink(number); }

void Application::End() { modules_->ending.IsApplicationShutdown(); }

const std::vector<forms::Form*>& Application::Forms() const { return modules_->forms; }

forms::Form* Application::FindForm(std::string_view name) const {
  for (forms::Form* form : modules_->forms) {
    if (form->name() == name) return form;
  }
  return nullptr;
}

const core::ApplicationFlags& Application::Flags() const { return modules_->flags; }

const telephony::CurrentCall& Application::Call() const { return modules_->line.call(); }

std::int32_t Application::CurrentLineId() const { return modules_->line.GetCurrentLineId(); }

bool Application::LineIdSet() const { return modules_->line.IsLineIdSet(); }

const ports::NotificationRecord& Application::TrayIconData() const { return modules_->icon.TrayIconData(); }

const forms::MenuItem& Application::TrayMenu() const { return modules_->tray.mPopupSys; }

std::string Application::DatabasePath() const { return modules_->settings.DatabasePath(); }

}  // namespace kestro::app
