#pragma once

#include <string>

#include "core/foreground.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "management/system_information_form.h"
#include "ports/system_information.h"

namespace kestro::management {

/// The about window: product, version, and the way to the system information.
class frmAbout final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::Messages& messages;
    core::ForceFore& foreground;
    ports::SystemInformationTool& system;
    frmSystemInformation& information;
    std::string_view product;
    std::string_view version;
  };
  frmAbout(forms::FormHost& host, const Needs& needs);

  /// Shows the window and brings it to the foreground.
  void BringUp();

  forms::Label lblTitle{*this, nullptr, "lblTitle", forms::Label::Role::kHeading};
  forms::Label lblVersion{*this, nullptr, "lblVersion", forms::Label::Role::kValue};
  forms::Button cmdOK{*this, nullptr, "cmdOK", forms::Button::Role::kDefault};
  forms::Button cmdSysInfo{*this, nullptr, "cmdSysInfo"};

 private:
  void LayOut();
  void Form_Load() override;
  void Form_Unload() override;
  void GetFormTextTranslation();
  void StartSysInfo();
  void cmdSysInfo_Click();
  void cmdOK_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::Messages& messages_;
  core::ForceFore& foreground_;
  ports::SystemInformationTool& system_;
  frmSystemInformation& information_;
  std::string product_;
  std::string version_;
};

}  // namespace kestro::management
