#pragma once

#include "exchange/exchange.h"
#include "ports/ansi_code_page.h"
#include "scenario/script.h"

namespace kestro::scenario {

/// Lets the exchange do what the action says: a call and what becomes of it,
/// answers, raw messages, failures of line functions. False for an action that
/// is not about the line. Raises ScriptError; base::ProcessEnded comes through.
bool PerformLineAction(const Action& action, exchange::Exchange& exchange,
                       const ports::AnsiCodePage& code_page);

}  // namespace kestro::scenario
