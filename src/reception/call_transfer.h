#pragma once

#include <string_view>

#include "core/messages.h"
#include "core/procedure_frame.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::reception::Functions {

/// The user hands the current call on.
class CallTransfer {
 public:
  CallTransfer(core::LogModule& log, core::Messages& messages, telephony::TAPIFunctionsModule& line)
      : procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop), messages_(messages), line_(line) {}

  /// Message 116 when the exchange refuses at once; an empty destination does nothing.
  void OnCallTransfer(std::string_view destination) {
    procedure_("OnCallTransfer", [&] {
      if (destination.empty()) return;
      if (line_.TransferCall(destination) < 0) messages_.Notice("116");
    });
  }

 private:
  core::ProcedureFrame procedure_;
  core::Messages& messages_;
  telephony::TAPIFunctionsModule& line_;
};

}  // namespace kestro::reception::Functions
