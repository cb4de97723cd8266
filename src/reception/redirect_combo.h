#pragma once

#include <string_view>
#include <utility>

#include "base/text.h"
#include "core/application_flags.h"
#include "forms/controls.h"
#include "reception/call_transfer.h"
#include "reception/internal_lines.h"

namespace kestro::reception {

/// The combo of a call window that hands the current call to an internal line:
/// its first item is a prompt, the others the captions of the lines. It acts
/// only on an accepted call and while it is ready, so that its own changes of
/// the selection start no transfer.
class RedirectCombo {
 public:
  RedirectCombo(forms::ComboBox& combo, const core::ApplicationFlags& flags, Functions::InternalLines& lines,
                Functions::CallTransfer& transfer)
      : combo_(combo), flags_(flags), lines_(lines), transfer_(transfer) {}

  void SetReady(bool ready) { ready_ = ready; }
  /// Enabled for an accepted call on a line that takes transfers.
  void EnableForCall() { combo_.SetEnabled(flags_.CallAccepted && flags_.RedirectAllowed); }

  /// Empties the list but for the prompt, which is selected.
  void Restart(std::string_view prompt) {
    const bool was_ready = std::exchange(ready_, false);
    combo_.Clear();
    combo_.AddItem(prompt);
    combo_.SetListIndex(0);
    ready_ = was_ready;
  }
  void AddLine(std::string_view caption) { combo_.AddItem(caption); }

  /// The selection changed.
  void Chosen() {
    if (!flags_.CallAccepted || !ready_) return;
    transfer_.OnCallTransfer(lines_.GetInternalListCallerId(base::Trim(combo_.text())));
    ready_ = false;
    combo_.SetListIndex(0);
    ready_ = true;
  }

 private:
  forms::ComboBox& combo_;
  const core::ApplicationFlags& flags_;
  Functions::InternalLines& lines_;
  Functions::CallTransfer& transfer_;
  bool ready_ = false;
};

}  // namespace kestro::reception
