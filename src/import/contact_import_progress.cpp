#include "import/contact_import_progress.h"

#include "base/scope_value.h"

namespace kestro::import {
namespace {

constexpr int kWidth = 6000;  // twips
constexpr int kHeight = 2200;

}  // namespace

frmContactImportProgress::frmContactImportProgress(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmContactImportProgress", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmContactImportProgress", core::Spelling::kFullStop),
      messages_(needs.messages),
      texts_(needs.texts),
      flags_(needs.flags),
      ending_(needs.ending) {
  LayOut();
  CancelButton.on_click = [this] { CancelButton_Click(); };
}

void frmContactImportProgress::LayOut() {
  Frame1.Place(ImportProgress, {0, 0});
  Frame1.Place(importedContactsLabel, {1, 0});
  Frame1.GrowColumn(0);
  ImportProgress.SetNamedBy(Frame1);
  body().Place(Frame1, {0, 0});
  body().Place(CancelButton, {2, 0});
  body().GrowColumn(0);
  body().GrowRow(1);
}

void frmContactImportProgress::Import(forms::Form& owner) {
  const base::ScopeValue modal(flags_.ModalDialogOpen, true);
  ShowModal(&owner);
}

void frmContactImportProgress::Form_Load() {
  procedure_.Outermost("Form_Load", [&] {
    started_ = false;
    GetFormTextTranslation();
  });
}

void frmContactImportProgress::GetFormTextTranslation() {
  procedure_("GetFormTextTranslation", [&] {
    SetCaption(texts_.GetLocalizedString("195"));
    Frame1.SetCaption(texts_.GetLocalizedString("196"));
    CancelButton.SetCaption(texts_.GetLocalizedString("197"));
    importedContactsLabel.SetCaption("");
    ImportProgress.SetRange(0, 0);
  });
}

/// Whatever becomes of the import, nothing is left to do here afterwards.
void frmContactImportProgress::Form_Activate() {
  if (started_) return;
  started_ = true;
  procedure_.Outermost("Form_Activate", [&] {
    const base::ScopeValue running(running_, true);
    if (on_start) on_start();
  });
  RequestUnload(forms::kFromCode);
}

void frmContactImportProgress::CancelButton_Click() {
  procedure_.Outermost("CancelButton_Click", [&] {
    const auto answer = messages_.Show(ports::kYesNo | ports::kQuestion, "144");
    if (answer == ports::BoxAnswer::kYes && on_cancel) on_cancel();
  });
}

void frmContactImportProgress::Form_QueryUnload(bool& cancel, int unload_mode) {
  procedure_.Outermost("Form_QueryUnload", [&] {
    if (unload_mode == forms::kFromCode) return;  // the import is over, or the application ends
    if (ending_.IsApplicationShutdown(unload_mode)) {
      if (!flags_.ShuttingDown) ending_.IsApplicationShutdown();
    } else if (running_) {
      // Also when the user agrees: the import comes to its own end and unloads the window.
      cancel = true;
      CancelButton_Click();
    }
  });
}

}  // namespace kestro::import
