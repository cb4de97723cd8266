#pragma once

#include <memory>

#include "contacts/close_recordset.h"
#include "contacts/contact_integration_module.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "core/shared_functions.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "management/edit_line.h"
#include "management/recordset_rows.h"

namespace kestro::management {

/// The internal lines that calls can be transferred to.
class frmPhoneLinesList final : public forms::Form {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::SharedFunctions& shared;
    contacts::ContactIntegrationModule& contacts;
    frmEditLine& editor;
  };
  frmPhoneLinesList(forms::FormHost& host, const Needs& needs);

  forms::Frame Frame1{*this, nullptr, "Frame1"};
  forms::Grid LinesGrid;
  forms::Button cmdNew{*this, &Frame1, "cmdNew"};
  forms::Button cmdEdit{*this, &Frame1, "cmdEdit"};
  forms::Button cmdDelete{*this, &Frame1, "cmdDelete"};
  forms::Button OKButton{*this, nullptr, "OKButton", forms::Button::Role::kCancel};

 private:
  void Form_Load() override;
  void Form_Unload() override;
  void GetFormTextTranslation();
  void LayOut();
  void Connect();
  void FillList();
  void CloseList();
  [[nodiscard]] bool HasSelection();
  [[nodiscard]] contacts::PhoneLine SelectedLine();

  void LinesGrid_HeadClick(int column);
  void LinesGrid_MouseDown(std::int64_t row);
  void cmdNew_Click();
  void cmdEdit_Click();
  void cmdDelete_Click();
  void OKButton_Click();

  core::ProcedureFrame procedure_;
  contacts::Functions::RecordsetClosing closing_;
  core::Messages& messages_;
  core::Localization& texts_;
  core::SharedFunctions& shared_;
  contacts::ContactIntegrationModule& contacts_;
  frmEditLine& editor_;
  std::unique_ptr<ports::Recordset> lines_;
  std::unique_ptr<RecordsetRows> rows_;
};

}  // namespace kestro::management
