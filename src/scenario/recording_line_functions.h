#pragma once

#include "ports/ansi_code_page.h"
#include "ports/line_functions.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Passes every line function on and writes it to the transcript with its result.
class RecordingLineFunctions final : public ports::LineFunctions {
 public:
  RecordingLineFunctions(ports::LineFunctions& inner, const ports::AnsiCodePage& code_page,
                         Transcript& transcript)
      : inner_(inner), code_page_(code_page), transcript_(transcript) {}

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
  /// "line CALL = RESULT" and what follows the result; returns the result.
  ports::LineResult Record(const std::string& call, ports::LineResult result,
                           const std::string& outcome = {});
  [[nodiscard]] std::string QuotedAnsi(std::string_view bytes) const;

  ports::LineFunctions& inner_;
  const ports::AnsiCodePage& code_page_;
  Transcript& transcript_;
};

}  // namespace kestro::scenario
