#pragma once

#include "scenario/script.h"
#include "scenario/session.h"

namespace kestro::scenario {

/// Prints the state that a dump action asks for. False for any other action.
/// Raises ScriptError for an unknown window and for a statement that cannot be
/// run. Settings can be dumped at any time, everything else once the session's
/// application has been made.
bool PerformDumpAction(const Action& action, Session& session);

}  // namespace kestro::scenario
