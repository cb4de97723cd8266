#pragma once

#include <string_view>

#include "contacts/contact.h"
#include "core/application_flags.h"
#include "core/foreground.h"
#include "core/localization.h"
#include "core/procedure_frame.h"
#include "reception/contact_detail.h"
#include "reception/internal_call.h"
#include "reception/unknown_contact.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::reception::Functions {

/// Brings the call windows up. No procedure raises: an error is logged.
class CallWindows {
 public:
  CallWindows(core::LogModule& log, core::Localization& texts, core::ApplicationFlags& flags,
              core::ForceFore& foreground, telephony::TAPIFunctionsModule& line, ContactDetail& detail,
              UnknownContact& unknown, InternalCall& internal);

  /// Places and fills the card once a call; later calls only bring it forward.
  void ShowContactDetailDialog(const contacts::FoundContacts& found);
  void ShowUnknownContactDialog(std::string_view caller_id);
  void ShowInternallCalDialog(std::string_view caller);
  /// Hides those of the three that are visible.
  void HideAll();

 private:
  static void PlaceNearTopRight(forms::Form& form);
  void BringForward(forms::Form& form);
  void ShowAndBringForward(forms::Form& form);

  core::ProcedureFrame procedure_;
  core::Localization& texts_;
  core::ApplicationFlags& flags_;
  core::ForceFore& foreground_;
  telephony::TAPIFunctionsModule& line_;
  ContactDetail& detail_;
  UnknownContact& unknown_;
  InternalCall& internal_;
};

}  // namespace kestro::reception::Functions
