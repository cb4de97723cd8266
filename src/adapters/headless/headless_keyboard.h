#pragma once

#include "forms/form.h"
#include "forms/key.h"

namespace kestro::adapters {

/// The user can type into the control: a text box that is not read-only, an editable list.
[[nodiscard]] bool TakesText(const forms::Control& control);

/// What a pressed key does in a window whose keyboard is at `focus` (nullptr =
/// nowhere). Keys that only move or delete inside a text are kept by the control
/// and change nothing: a text has no cursor here, or it stands at the end.
void PressKeyIn(forms::Form& form, forms::Control* focus, const forms::Key& key);

}  // namespace kestro::adapters
