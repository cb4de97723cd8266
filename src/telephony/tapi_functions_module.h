#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "contacts/contact_integration_module.h"
#include "core/application_flags.h"
#include "core/line_monitor.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "core/registry_settings_module.h"
#include "ports/ansi_code_page.h"
#include "ports/line_functions.h"
#include "ports/line_structures.h"
#include "telephony/current_call.h"
#include "telephony/line_event_receiver.h"
#include "telephony/tapi_error.h"
#include "telephony/tapi_module.h"

namespace kestro::telephony {

/// The watched telephone line: its session (line_session.cpp), the messages
/// that arrive for it (line_events.cpp) and the control of the current call
/// (call_control.cpp). Runs on the user-interface thread; the line functions
/// deliver their messages there.
///
/// Errors are raised as base::RuntimeError unless told otherwise.
class TAPIFunctionsModule final : public core::LineMonitor {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::RegistrySettingsModule& settings;
    core::ApplicationFlags& flags;
    ports::LineFunctions& line;
    const ports::AnsiCodePage& code_page;
    contacts::ContactIntegrationModule& contacts;
    LineEventReceiver& receiver;
    LineList& lines;
  };
  explicit TAPIFunctionsModule(const Needs& needs);

  // --- session ---
  /// Lists the line devices and finds the configured one. Messages 104 and 105.
  void InitializeLine() override;
  /// Opens the line of that device. A failure shows message 100 or 101 where
  /// the user can do something about it, closes what had been opened and raises.
  void StartLineListening(std::int32_t device) override;
  void StopLineListening() override;
  void ShutDownLine() override;

  // --- events ---
  /// Every message of the line functions arrives here. Raises nothing: an error
  /// ends the application through the receiver.
  void LineCallBack(const ports::LineMessage& message);

  // --- call control ---
  [[nodiscard]] bool CheckExternalCall() const;
  [[nodiscard]] bool CheckTransferedCall() const;
  [[nodiscard]] std::string GetCurrentCallerID() const;
  [[nodiscard]] bool IsLineIdSet() override;
  [[nodiscard]] std::int32_t GetCurrentLineId() override;
  void DropCall(bool keep_call) override;
  /// Asks for a blind transfer of the current call. Negative: refused at once;
  /// else the request id, whose outcome arrives as LINE_REPLY.
  std::int32_t TransferCall(std::string_view destination);

  /// The settings dialog chose a line.
  void SetCurrentLine(std::int32_t device);
  [[nodiscard]] const CurrentCall& call() const { return call_; }
  /// The call has ended for the user.
  void ClearCallerFound() { call_.CallerFound = false; }

 private:
  using DevCaps = std::array<std::uint8_t, ports::line_dev_caps::kBufferSize>;

  // session
  void InitializeLineFunctions(std::string_view failure_text_id);
  void NegotiateVersion(std::int32_t device, std::string_view failure_text_id,
                        std::initializer_list<std::string> parameters);
  void OpenLine(std::int32_t device);
  void CloseLine();
  [[nodiscard]] std::int32_t ReadDevCaps(std::int32_t device, DevCaps& dev_caps);
  [[nodiscard]] std::string LineNameOf(const DevCaps& dev_caps) const;
  [[nodiscard]] bool ListLines(std::string_view configured_name, std::int32_t& configured_device);
  void ReadRedirectRule();

  // events
  void Dispatch(const ports::LineMessage& message);
  void OnCallInfo(const ports::LineMessage& message);
  void OnReply(std::int32_t result);
  void LineCallStateProc(const ports::LineMessage& message);
  void OnIdle();
  void OnOffering(std::int32_t call);
  void LineDevStateProc(const ports::LineMessage& message);
  void GetCallerInfo(std::int32_t call, bool connected);
  void ReadOfferedCaller(std::span<const std::uint8_t> call_info);
  void ReadConnectedParty(std::span<const std::uint8_t> call_info);
  void AnnounceInternalCall();
  void ForgetCaller();
  [[nodiscard]] std::string ExtractNumber(std::span<const std::uint8_t> call_info, std::uint32_t offset,
                                          std::uint32_t size) const;
  [[nodiscard]] std::int16_t LoWord(std::int32_t value) const;
  void LogName(std::string_view procedure, std::string_view name) const;

  core::ProcedureFrame procedure_;
  core::Messages& messages_;
  core::Localization& texts_;
  core::RegistrySettingsModule& settings_;
  core::ApplicationFlags& flags_;
  ports::LineFunctions& functions_;
  const ports::AnsiCodePage& code_page_;
  contacts::ContactIntegrationModule& contacts_;
  LineEventReceiver& receiver_;
  LineList& lines_;
  TAPIError errors_;
  TAPIModule structures_;

  CurrentCall call_;
  ports::LineHandle application_ = 0;  // 0 = the line functions are not initialised
  ports::LineHandle line_ = 0;         // 0 = the line is closed
  bool line_open_ = false;
  std::uint32_t device_count_ = 0;
  std::uint32_t api_version_ = 0;
  DevCaps dev_caps_{};
  std::int32_t CurrentLineId_ = 0;
  bool LineIdSet_ = false;
};

}  // namespace kestro::telephony
