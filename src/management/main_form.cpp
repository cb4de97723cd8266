#include "management/main_form.h"

namespace kestro::management {
namespace {

constexpr int kWidth = 12000;  // twips
constexpr int kHeight = 9000;

}  // namespace

frmMainForm::frmMainForm(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmMainForm", kWidth, kHeight),
      ContactsGrid(*this, nullptr, "ContactsGrid",
                   {{"", "Name", 3600}, {"", "Company", 3600}, {"", "City", 2000}, {"", "Phone1", 2000}}),
      procedure_(needs.log, "KESTROCTI.frmMainForm", core::Spelling::kFullStop),
      texts_(needs.texts),
      flags_(needs.flags),
      ending_(needs.ending),
      foreground_(needs.foreground) {
  LayOut();
  mnuNewContact.SetShortcut("Ctrl+N");
  mnuDeleteContact.SetShortcut("Del");
  mnuEditContact.SetEnabled(false);
  mnuDeleteContact.SetEnabled(false);
  ContactsGrid.SetEnabled(false);
  for (const int tool : {kToolEdit, kToolDelete, kToolCall}) ActionToolbar.SetItemEnabled(tool, false);
  // There is no page of ours on the web that it could open.
  ActionToolbar.SetItemVisible(kToolGap, false);
  ActionToolbar.SetItemVisible(kToolWeb, false);
  mnuExit.on_click = [this] { mnuExit_Click(); };
}

void frmMainForm::LayOut() {
  FilterFrame.Place(lblClassNameName, {0, 0});
  FilterFrame.Place(txtName, {0, 1});
  FilterFrame.Place(lblCompany, {0, 2});
  FilterFrame.Place(txtCompany, {0, 3});
  FilterFrame.Place(btnSearch, {0, 4});
  FilterFrame.Place(lblCity, {1, 0});
  FilterFrame.Place(txtCity, {1, 1});
  FilterFrame.Place(lblNote, {1, 2});
  FilterFrame.Place(txtNote, {1, 3});
  FilterFrame.Place(btnSearchAll, {1, 4});
  txtName.SetNamedBy(lblClassNameName);
  txtCompany.SetNamedBy(lblCompany);
  txtCity.SetNamedBy(lblCity);
  txtNote.SetNamedBy(lblNote);
  body().Place(ActionToolbar, {0, 0});
  body().Place(FilterFrame, {1, 0});
  body().Place(ContactsGrid, {2, 0});
  body().GrowRow(2);
}

void frmMainForm::BringUp() {
  Show();
  SetWindowState(forms::WindowState::kNormal);
  foreground_.ForceForegroundWindow(handle());
}

void frmMainForm::ShowInFront() {
  Show();
  foreground_.ForceForegroundWindow(handle());
}

void frmMainForm::Form_Load() {
  procedure_.Outermost(
      "Form_Load",
      [&] {
        GetFormTextTranslation();
        if (on_load) on_load();
      },
      [&](const base::RuntimeError& error) {
        if (on_load_failed) on_load_failed(error);
      });
}

void frmMainForm::Form_Activate() {
  procedure_.Outermost("Form_Activate", [&] {
    if (on_activate) on_activate();
  });
}

void frmMainForm::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    const auto set = [this](forms::CaptionedControl& control, std::string_view text_id) {
      control.SetCaption(texts_.GetLocalizedString(text_id));
    };
    SetCaption(texts_.GetLocalizedString("245"));
    set(FilterFrame, "231");
    set(lblClassNameName, "177");
    set(lblCompany, "178");
    set(lblCity, "207");
    set(lblNote, "232");
    set(btnSearch, "233");
    set(btnSearchAll, "234");
    set(mnuApplication, "214");
    set(mnuExit, "230");
    set(mnuContact, "216");
    set(mnuNewContact, "217");
    set(mnuEditContact, "218");
    set(mnuDeleteContact, "219");
    set(mnuImportContacts, "220");
    set(mnuSettings, "221");
    set(mnuUserFields, "224");
    set(mnuPhoneLines, "223");
    set(mnuAppHelp, "227");
    set(mnuHelpContents, "228");
    set(mnuAbout, "229");
    int column = 0;
    for (const char* text_id : {"235", "236", "237", "238"}) {
      ContactsGrid.SetColumnCaption(column++, texts_.GetLocalizedString(text_id));
    }
    ActionToolbar.SetToolTip(kToolNew, texts_.GetLocalizedString("239"));
    ActionToolbar.SetToolTip(kToolEdit, texts_.GetLocalizedString("240"));
    ActionToolbar.SetToolTip(kToolDelete, texts_.GetLocalizedString("241"));
    ActionToolbar.SetToolTip(kToolCall, texts_.GetLocalizedString("273"));
  });
}

void frmMainForm::mnuExit_Click() {
  procedure_.Outermost("mnuExit_Click", [&] { ending_.IsApplicationShutdown(); });
}

/// The user's close button puts the window away; the application goes on.
void frmMainForm::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (ending_.IsApplicationShutdown(unload_mode)) {
      if (!flags_.ShuttingDown) ending_.IsApplicationShutdown();
      return;
    }
    cancel = true;
    if (stays_reachable_) {
      SetWindowState(forms::WindowState::kMinimized);
    } else {
      Hide();
    }
  });
}

void frmMainForm::Form_Unload() {
  procedure_.Outermost("Form_Unload", [&] {
    ending_.IsApplicationShutdown();
    if (on_unload) on_unload();
  });
}

}  // namespace kestro::management
