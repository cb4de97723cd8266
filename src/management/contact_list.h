#pragma once

#include <memory>
#include <optional>

#include "contacts/close_recordset.h"
#include "contacts/contact_integration_module.h"
#include "core/application_flags.h"
#include "core/dialling.h"
#include "core/lifecycle.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "core/shared_functions.h"
#include "management/edit_contact.h"
#include "management/main_form.h"
#include "management/phone_lines_list.h"
#include "management/recordset_rows.h"
#include "management/user_fields_names.h"

namespace kestro::management {

/// What the main window does with contacts: search, sort, select, edit, delete,
/// dial. Every handler logs an error; some end in a message.
class ContactList {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::ApplicationFlags& flags;
    core::SharedFunctions& shared;
    core::Functions::Lifecycle& lifecycle;
    core::Dialling& dialling;
    contacts::ContactIntegrationModule& contacts;
    frmMainForm& window;
    frmEditContact& editor;
    frmUserFieldsNames& user_fields;
    frmPhoneLinesList& phone_lines;
  };
  /// Plugs the handlers into the main window.
  explicit ContactList(const Needs& needs);

  /// Searches with the four filter texts and shows the result. `show_messages`:
  /// say so when nothing is found or there is no database.
  void ProcessSearch(bool show_messages);
  /// Other windows have changed contacts, or the database is another one: what
  /// the list shows is read again, at once or when the window is next looked at.
  void Refresh();

  /// The internal lines have changed, plugged in by the application.
  forms::Handler on_phone_lines_changed;
  /// Imports contacts and returns when that is over, plugged in by the application.
  forms::Handler on_import;
  forms::Handler on_help;
  forms::Handler on_about;

 private:
  void Connect();
  void Search();
  void CloseRecordset();
  [[nodiscard]] bool HasDatabase(bool tell = true);
  [[nodiscard]] std::optional<contacts::Contact> SelectedContact();
  [[nodiscard]] std::int64_t SelectedKey();
  void EnableActions(bool enabled);
  void ShowEditor(const forms::Handler& show);
  void WithoutMonitoring(const forms::Handler& work);
  void StartMonitoring();
  void WithHourglass(const forms::Handler& work);

  void Form_Activate();
  void btnSearch_Click();
  void btnSearchAll_Click();
  void ContactsGrid_HeadClick(int column);
  void ContactsGrid_MouseDown(std::int64_t row);
  void ActionToolbar_ButtonClick(int number);
  void mnuNewContact_Click();
  void mnuEditContact_Click();
  void mnuDeleteContact_Click();
  void mnuCallContact_Click();
  void mnuImportContacts_Click();
  void mnuUserFields_Click();
  void mnuPhoneLines_Click();

  core::ProcedureFrame procedure_;
  contacts::Functions::RecordsetClosing closing_;
  Needs needs_;
  std::unique_ptr<ports::Recordset> contactsRecordset_;
  std::unique_ptr<RecordsetRows> rows_;
};

}  // namespace kestro::management
