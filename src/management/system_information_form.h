#pragma once

#include "core/foreground.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "forms/form.h"
#include "ports/clipboard.h"
#include "ports/system_information.h"

namespace kestro::management {

/// Lists the versions that a support question needs, and copies them.
class frmSystemInformation final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Localization& texts;
    core::ForceFore& foreground;
    ports::Clipboard& clipboard;
  };
  frmSystemInformation(forms::FormHost& host, const Needs& needs);

  /// Shows the program and what is known of the system; the rows of what is not known are left out.
  void ShowInformation(std::string_view program, const ports::SystemInformation& information);

  forms::Label lblProgramLabel{*this, nullptr, "lblProgramLabel"};
  forms::Label lblProgram{*this, nullptr, "lblProgram", forms::Label::Role::kValue};
  forms::Label lblToolkitLabel{*this, nullptr, "lblToolkitLabel"};
  forms::Label lblToolkit{*this, nullptr, "lblToolkit", forms::Label::Role::kValue};
  forms::Label lblDatabaseEngineLabel{*this, nullptr, "lblDatabaseEngineLabel"};
  forms::Label lblDatabaseEngine{*this, nullptr, "lblDatabaseEngine", forms::Label::Role::kValue};
  forms::Label lblSystemLabel{*this, nullptr, "lblSystemLabel"};
  forms::Label lblSystem{*this, nullptr, "lblSystem", forms::Label::Role::kValue};
  forms::Label lblDesktopLabel{*this, nullptr, "lblDesktopLabel"};
  forms::Label lblDesktop{*this, nullptr, "lblDesktop", forms::Label::Role::kValue};
  forms::Button cmdCopy{*this, nullptr, "cmdCopy"};
  forms::Button cmdClose{*this, nullptr, "cmdClose", forms::Button::Role::kCancel};

 private:
  /// A caption and the value beside it.
  struct Row {
    forms::Label& caption;
    forms::Label& value;
    std::string_view text_id;
  };
  [[nodiscard]] std::vector<Row> Rows();

  void LayOut();
  void Form_Load() override;
  void GetFormTextTranslation();
  void cmdCopy_Click();
  void cmdClose_Click();

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ForceFore& foreground_;
  ports::Clipboard& clipboard_;
};

}  // namespace kestro::management
