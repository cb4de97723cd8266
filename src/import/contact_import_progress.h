#pragma once

#include "core/application_ending.h"
#include "core/application_flags.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"

namespace kestro::import {

/// Shows how far an import has come and lets the user abort it. The window works
/// by itself: shown for the first time it runs the import, then it is unloaded.
class frmContactImportProgress final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::ApplicationFlags& flags;
    core::Functions::ApplicationEnding& ending;
  };
  frmContactImportProgress(forms::FormHost& host, const Needs& needs);

  /// Runs the import; returns when it is over.
  void Import(forms::Form& owner);

  /// Plugged in by ContactsImport: the import itself, and the user's wish to end it.
  forms::Handler on_start;
  forms::Handler on_cancel;

  forms::Frame Frame1{*this, nullptr, "Frame1"};
  forms::ProgressBar ImportProgress{*this, &Frame1, "ImportProgress"};
  forms::Label importedContactsLabel{*this, &Frame1, "importedContactsLabel"};
  forms::Button CancelButton{*this, nullptr, "CancelButton", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_QueryUnload(bool& cancel, int unload_mode) override;
  void GetFormTextTranslation();
  void LayOut();
  void CancelButton_Click();

  core::ProcedureFrame procedure_;
  core::Messages& messages_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  core::Functions::ApplicationEnding& ending_;
  bool started_ = false;
  bool running_ = false;
};

}  // namespace kestro::import
