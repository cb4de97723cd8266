#pragma once

#include "adapters/win32/line_mailbox.h"
#include "adapters/win32/tapi_library.h"
#include "ports/line_functions.h"

namespace kestro::adapters {

/// The system's line functions. Without the library, or without one of its
/// functions, the call fails with LINEERR_OPERATIONUNAVAIL and nothing else happens.
class TapiLineFunctions final : public ports::LineFunctions {
 public:
  static constexpr ports::LineResult kOperationUnavailable = static_cast<ports::LineResult>(0x80000049U);

  /// Messages are run through `run` as they come to the window's thread. The window must outlive the object.
  TapiLineFunctions(HiddenWindow& window, LineMailbox::Runner run) : mailbox_(window, std::move(run)) {}
  ~TapiLineFunctions() override = default;
  TapiLineFunctions(const TapiLineFunctions&) = delete;
  TapiLineFunctions& operator=(const TapiLineFunctions&) = delete;

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
  template <class Function, class... Arguments>
  ports::LineResult Call(Function function, Arguments... arguments);

  TapiLibrary library_;
  LineMailbox mailbox_;
  ports::LineHandle application_ = 0;  // the last one given out
};

}  // namespace kestro::adapters
