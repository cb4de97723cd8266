#include "management/contact_list.h"

#include "base/scope_value.h"

namespace kestro::management {

ContactList::ContactList(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.frmMainForm", core::Spelling::kFullStop),
      closing_(needs.log),
      needs_(needs) {
  Connect();
}

void ContactList::Connect() {
  frmMainForm& window = needs_.window;
  window.on_activate = [this] { Form_Activate(); };
  window.on_unload = [this] { CloseRecordset(); };
  window.btnSearch.on_click = [this] { btnSearch_Click(); };
  window.btnSearchAll.on_click = [this] { btnSearchAll_Click(); };
  window.ContactsGrid.on_head_click = [this](int column) { ContactsGrid_HeadClick(column); };
  window.ContactsGrid.on_mouse_down = [this](std::int64_t row) { ContactsGrid_MouseDown(row); };
  window.ContactsGrid.on_double_click = [this] { ActionToolbar_ButtonClick(frmMainForm::kToolEdit); };
  window.ActionToolbar.on_button_click = [this](int number) { ActionToolbar_ButtonClick(number); };
  window.mnuNewContact.on_click = [this] { mnuNewContact_Click(); };
  window.mnuEditContact.on_click = [this] { mnuEditContact_Click(); };
  window.mnuDeleteContact.on_click = [this] { mnuDeleteContact_Click(); };
  window.mnuImportContacts.on_click = [this] { mnuImportContacts_Click(); };
  window.mnuUserFields.on_click = [this] { mnuUserFields_Click(); };
  window.mnuPhoneLines.on_click = [this] { mnuPhoneLines_Click(); };
  window.mnuHelpContents.on_click = [this] {
    procedure_.Outermost("mnuHelpContents_Click", [&] {
      if (on_help) on_help();
    });
  };
  window.mnuAbout.on_click = [this] {
    procedure_.Outermost("mnuAbout_Click", [&] {
      if (on_about) on_about();
    });
  };
  window.AddShortcut("F5", [this] { btnSearch_Click(); });
  window.AddShortcut("Ctrl+F", [&window] { window.txtName.SetFocus(); });
}

bool ContactList::HasDatabase(bool tell) {
  if (!needs_.flags.DatabaseAccessible && tell) needs_.messages.Notice("129");
  return needs_.flags.DatabaseAccessible;
}

void ContactList::Form_Activate() {
  if (!contactsRecordset_) ProcessSearch(false);
}

void ContactList::CloseRecordset() {
  needs_.window.ContactsGrid.SetRows(nullptr);
  rows_.reset();
  closing_.CloseRecordset(contactsRecordset_);
}

void ContactList::ProcessSearch(bool show_messages) {
  procedure_.Outermost("ProcessSearch", [&] {
    if (!HasDatabase(show_messages)) return;
    WithHourglass([&] { Search(); });
    const bool found = contactsRecordset_->RecordCount() != 0;
    if (show_messages && !found) needs_.messages.Notice("132");
    needs_.window.ContactsGrid.SetEnabled(found);
    EnableActions(false);
  });
}

void ContactList::Search() {
  auto component = needs_.contacts.Connected<contacts::CTIContacts>();
  CloseRecordset();
  const frmMainForm& window = needs_.window;
  contactsRecordset_ = component.SearchContacts(window.txtName.text(), window.txtCompany.text(),
                                                window.txtCity.text(), window.txtNote.text());
  rows_ = std::make_unique<RecordsetRows>(*contactsRecordset_, window.ContactsGrid.columns());
  needs_.window.ContactsGrid.SetRows(rows_.get());
}

void ContactList::Refresh() {
  if (!needs_.window.loaded()) return;
  if (needs_.window.visible()) return ProcessSearch(false);
  // Not looked at now: the next activation searches.
  CloseRecordset();
  EnableActions(false);
}

void ContactList::btnSearch_Click() {
  procedure_.Outermost("btnSearch_Click", [&] { ProcessSearch(true); });
}

void ContactList::btnSearchAll_Click() {
  procedure_.Outermost("btnSearchAll_Click", [&] {
    frmMainForm& window = needs_.window;
    for (forms::TextBox* filter : {&window.txtName, &window.txtCompany, &window.txtCity, &window.txtNote}) {
      filter->SetText("");
    }
    ProcessSearch(false);
  });
}

void ContactList::ContactsGrid_HeadClick(int column) {
  procedure_.Outermost("ContactsGrid_HeadClick", [&] {
    if (!contactsRecordset_) return;
    forms::Grid& grid = needs_.window.ContactsGrid;
    WithHourglass([&] {
      needs_.shared.SetSortStringForDataSource(
          *contactsRecordset_, grid.columns().at(static_cast<std::size_t>(column)).data_field);
    });
    grid.Refresh();
    EnableActions(false);
  });
}

/// At most one row is selected; a press beside the rows clears it.
void ContactList::ContactsGrid_MouseDown(std::int64_t row) {
  procedure_.Outermost("ContactsGrid_MouseDown", [&] {
    forms::Grid& grid = needs_.window.ContactsGrid;
    grid.SelectRow(row);
    EnableActions(grid.selected_row() != forms::Grid::kNoRow);
  });
}

void ContactList::EnableActions(bool enabled) {
  frmMainForm& window = needs_.window;
  window.mnuEditContact.SetEnabled(enabled);
  window.mnuDeleteContact.SetEnabled(enabled);
  for (const int tool : {frmMainForm::kToolEdit, frmMainForm::kToolDelete, frmMainForm::kToolCall}) {
    window.ActionToolbar.SetItemEnabled(tool, enabled);
  }
}

void ContactList::WithHourglass(const forms::Handler& work) {
  struct Pointer {
    explicit Pointer(forms::FormHost& windows) : host(windows) {
      host.SetPointer(forms::Pointer::kHourglass);
    }
    ~Pointer() { host.SetPointer(forms::Pointer::kDefault); }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    forms::FormHost& host;
  };
  const Pointer pointer(needs_.window.host());
  work();
}

void ContactList::ActionToolbar_ButtonClick(int number) {
  procedure_.Outermost("ActionToolbar_ButtonClick", [&] {
    WithHourglass([&] {
      switch (number) {
        case frmMainForm::kToolNew:
          return mnuNewContact_Click();
        case frmMainForm::kToolEdit:
          return mnuEditContact_Click();
        case frmMainForm::kToolDelete:
          return mnuDeleteContact_Click();
        case frmMainForm::kToolCall:
          return mnuCallContact_Click();
        default:
          return;
      }
    });
  });
}

void ContactList::mnuNewContact_Click() {
  procedure_.Outermost("mnuNewContact_Click", [&] {
    if (!HasDatabase()) return;
    ShowEditor([&] { needs_.editor.EditNew(needs_.window); });
  });
}

std::int64_t ContactList::SelectedKey() {
  contactsRecordset_->MoveTo(needs_.window.ContactsGrid.selected_row());
  return contactsRecordset_->Integer(contactsRecordset_->FieldIndex("id_Contact"));
}

/// The contact of the selected row; message 131 when it is gone.
std::optional<contacts::Contact> ContactList::SelectedContact() {
  auto contact = needs_.contacts.Connected<contacts::CTIContacts>().GetContact(SelectedKey());
  if (!contact) needs_.messages.Notice("131");
  return contact;
}

void ContactList::mnuEditContact_Click() {
  procedure_.Outermost("mnuEditContact_Click", [&] {
    if (!HasDatabase() || needs_.window.ContactsGrid.selected_row() == forms::Grid::kNoRow) return;
    std::optional<contacts::Contact> contact;
    WithHourglass([&] {
      needs_.window.host().DoEvents();
      // What ran there may have searched anew: then nothing is selected any more.
      if (needs_.window.ContactsGrid.selected_row() != forms::Grid::kNoRow) contact = SelectedContact();
    });
    if (contact) ShowEditor([&] { needs_.editor.Edit(*contact, needs_.window); });
  });
}

/// Logs under the name of the edit handler; kept as it is.
void ContactList::mnuDeleteContact_Click() {
  procedure_.Outermost(
      "mnuEditContact_Click",
      [&] {
        if (!HasDatabase()) return;
        if (needs_.window.ContactsGrid.selected_row() == forms::Grid::kNoRow)
          return needs_.messages.Notice("127");
        const std::int64_t key = SelectedKey();
        auto component = needs_.contacts.Connected<contacts::CTIContacts>();
        const auto answer = needs_.messages.Show(ports::kYesNo | ports::kQuestion, "128");
        if (answer != ports::BoxAnswer::kYes) return;
        procedure_.Log("mnuEditContact_Click", "Deleting contact.");
        component.DeleteContact(key);
        ProcessSearch(false);
      },
      [&](const base::RuntimeError&) { needs_.messages.Notice("130"); });
}

void ContactList::mnuCallContact_Click() {
  procedure_.Outermost(
      "mnuCallContact_Click",
      [&] {
        if (!HasDatabase()) return;
        if (needs_.window.ContactsGrid.selected_row() == forms::Grid::kNoRow)
          return needs_.messages.Notice("127");
        if (const auto contact = SelectedContact()) needs_.dialling.Dial(contact->Phone.front());
      },
      [&](const base::RuntimeError&) { needs_.messages.Notice("285"); });
}

/// The hourglass of a tool-bar button must not stay over the editor.
void ContactList::ShowEditor(const forms::Handler& show) {
  const base::ScopeValue modal(needs_.flags.ModalDialogOpen, true);
  needs_.window.host().SetPointer(forms::Pointer::kDefault);
  show();
}

/// Monitoring rests meanwhile and goes on afterwards if it was running, unless
/// the user has started it from the tray menu in between.
void ContactList::WithoutMonitoring(const forms::Handler& work) {
  const bool was_running = needs_.flags.ApplicationStarted;
  if (was_running) needs_.lifecycle.StopApplication();
  try {
    work();
  } catch (const base::RuntimeError&) {
    if (was_running) StartMonitoring();
    throw;
  }
  if (was_running) StartMonitoring();
}

void ContactList::StartMonitoring() {
  if (needs_.flags.ApplicationStarted) return;
  auto fault = core::Functions::StartFault::kNone;
  std::string message;
  needs_.lifecycle.StartApplication(fault, message);
}

void ContactList::mnuImportContacts_Click() {
  procedure_.Outermost("mnuImportContacts_Click", [&] {
    if (!HasDatabase()) return;
    WithoutMonitoring([&] {
      if (on_import) on_import();
      ProcessSearch(false);
    });
  });
}

void ContactList::mnuUserFields_Click() {
  procedure_.Outermost("mnuUserFields_Click", [&] {
    if (HasDatabase()) WithoutMonitoring([&] { needs_.user_fields.Edit(needs_.window); });
  });
}

void ContactList::mnuPhoneLines_Click() {
  procedure_.Outermost("mnuPhoneLines_Click", [&] {
    if (!HasDatabase()) return;
    const base::ScopeValue modal(needs_.flags.ModalDialogOpen, true);
    needs_.phone_lines.ShowModal(&needs_.window);
    if (on_phone_lines_changed) on_phone_lines_changed();
  });
}

}  // namespace kestro::management
