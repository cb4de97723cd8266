#pragma once

#include "forms/form.h"

namespace kestro::forms {

// Where the keyboard can be inside a window; the same on every front end.

/// The user can move the keyboard to controls of that kind.
[[nodiscard]] bool TakesKeyboard(const Control& control);
/// The control can have the keyboard now.
[[nodiscard]] bool CanHaveKeyboard(const Control& control);
/// The first control in the window's order that can have the keyboard now, looked
/// for from `start` on and, behind the last one, from the front (nullptr = from
/// the front); nullptr when none can.
[[nodiscard]] Control* KeyboardPlaceFrom(const Form& form, const Control* start);

}  // namespace kestro::forms
