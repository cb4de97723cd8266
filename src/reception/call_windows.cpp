#include "reception/call_windows.h"

#include "base/text.h"

namespace kestro::reception::Functions {
namespace {

constexpr int kMarginRight = 100;  // twips
constexpr int kTop = 300;
constexpr std::string_view kUnknownCaller = "UNKNOWN";

}  // namespace

CallWindows::CallWindows(core::LogModule& log, core::Localization& texts, core::ApplicationFlags& flags,
                         core::ForceFore& foreground, telephony::TAPIFunctionsModule& line,
                         ContactDetail& detail, UnknownContact& unknown, InternalCall& internal)
    : procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop),
      texts_(texts),
      flags_(flags),
      foreground_(foreground),
      line_(line),
      detail_(detail),
      unknown_(unknown),
      internal_(internal) {}

void CallWindows::PlaceNearTopRight(forms::Form& form) {
  form.MoveTo(form.host().Screen().width - form.width() - kMarginRight, kTop);
}

void CallWindows::BringForward(forms::Form& form) {
  form.Show();
  form.SetWindowState(forms::WindowState::kNormal);
  foreground_.ForceForegroundWindow(form.handle());
}

void CallWindows::ShowAndBringForward(forms::Form& form) {
  if (!form.visible()) PlaceNearTopRight(form);
  BringForward(form);
}

void CallWindows::ShowContactDetailDialog(const contacts::FoundContacts& found) {
  procedure_.Outermost("ShowContactDetailDialog", [&] {
    detail_.Load();
    detail_.redirect().EnableForCall();
    if (flags_.ContactDetailShown) return BringForward(detail_);
    PlaceNearTopRight(detail_);
    if (found && !found->empty()) {
      detail_.SetFoundContacts(found);
      detail_.SetPhoneNumber(line_.GetCurrentCallerID());
      detail_.BeforeShowControl();
      BringForward(detail_);
    }
    flags_.ContactDetailShown = true;
  });
}

void CallWindows::ShowUnknownContactDialog(std::string_view caller_id) {
  procedure_.Outermost("ShowUnknownContactDialog", [&] {
    unknown_.Load();
    const bool unknown = base::Trim(caller_id).empty() || base::UpperCase(caller_id) == kUnknownCaller;
    unknown_.lblPhoneNumber.SetCaption(unknown ? texts_.GetLocalizedString("278") : std::string(caller_id));
    ShowAndBringForward(unknown_);
  });
}

void CallWindows::ShowInternallCalDialog(std::string_view caller) {
  procedure_.Outermost("ShowInternallCalDialog", [&] {
    internal_.Load();
    internal_.lblCaller.SetCaption(base::Trim(caller).empty() ? texts_.GetLocalizedString("278")
                                                              : std::string(caller));
    ShowAndBringForward(internal_);
  });
}

void CallWindows::HideAll() {
  detail_.Hide();
  unknown_.Hide();
  internal_.Hide();
}

}  // namespace kestro::reception::Functions
