#pragma once

#include <string_view>

#include "scenario/script.h"
#include "scenario/session.h"

namespace kestro::scenario {

/// What the user does with windows, controls and the notification icon. False
/// for any other action. What cannot be reached is refused in the transcript;
/// what does not exist raises ScriptError. base::ProcessEnded comes through.
/// The session's application must have been made.
bool PerformWindowAction(const Action& action, Session& session);

/// The window of that name; raises ScriptError when there is none.
[[nodiscard]] forms::Form& FindWindow(const Action& action, std::string_view name, Session& session);

}  // namespace kestro::scenario
