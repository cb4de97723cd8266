#pragma once

#include "adapters/posix/command_dialling.h"
#include "exchange/exchange_dialling.h"

namespace kestro::programs {

/// The user's dialling command when there is one, otherwise the software
/// exchange. Asked anew for every call.
class ChosenDialling final : public ports::DiallingObjects {
 public:
  ChosenDialling(ports::SettingsStore& settings, adapters::DetachedProcesses& processes,
                 exchange::Exchange& exchange, const ports::AnsiCodePage& code_page)
      : command_(settings, processes), exchange_(exchange, code_page) {}

  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override {
    return command_.Configured() ? command_.CreateDialCom() : exchange_.CreateDialCom();
  }
  [[nodiscard]] bool HandsToDesktop() override { return command_.Configured() && command_.HandsToDesktop(); }

 private:
  adapters::CommandDialling command_;
  exchange::ExchangeDialling exchange_;
};

}  // namespace kestro::programs
