#pragma once

#include "faults/fault_plan.h"
#include "ports/line_functions.h"

namespace kestro::faults {

/// Line functions of which one call fails with LINEERR_OPERATIONFAILED.
class FailingLineFunctions final : public ports::LineFunctions {
 public:
  FailingLineFunctions(ports::LineFunctions& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}

  ports::LineResult Initialize(ports::LineHandle& application, ports::LineCallback callback,
                               std::string_view ansi_application_name, std::uint32_t& device_count) override;
  ports::LineResult NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                        std::uint32_t lowest, std::uint32_t highest,
                                        std::uint32_t& version) override;
  ports::LineResult GetDevCaps(ports::LineHandle application, std::uint32_t device, std::uint32_t version,
                               std::uint32_t extension_version, std::span<std::uint8_t> dev_caps) override;
  ports::LineResult Open(ports::LineHandle application, std::uint32_t device, ports::LineHandle& line,
                         std::uint32_t version, std::uint32_t extension_version,
                         std::uint32_t callback_instance, std::uint32_t privileges,
                         std::uint32_t media_modes) override;
  ports::LineResult SetStatusMessages(ports::LineHandle line, std::uint32_t line_states,
                                      std::uint32_t address_states) override;
  ports::LineResult GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) override;
  ports::LineResult Drop(ports::CallHandle call, std::string_view ansi_user_info,
                         std::uint32_t size) override;
  ports::LineResult DeallocateCall(ports::CallHandle call) override;
  ports::LineResult TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                     std::uint32_t version, std::string_view ansi_address, std::uint32_t card,
                                     std::uint32_t options,
                                     std::span<std::uint8_t> translate_output) override;
  ports::LineResult BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                  std::uint32_t country_code) override;
  ports::LineResult Close(ports::LineHandle line) override;
  ports::LineResult Shutdown(ports::LineHandle application) override;

 private:
  [[nodiscard]] bool Fails() { return plan_.Fails(Port::kLineFunctions); }

  ports::LineFunctions& inner_;
  FaultPlan& plan_;
};

}  // namespace kestro::faults
