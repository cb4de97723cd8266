#include "adapters/win32/tapi_line_functions.h"

#include <array>
#include <string>

#include "ports/line_structures.h"

namespace kestro::adapters {
namespace {

using ports::LineResult;

/// Room for the extension identifier: four double words.
using ExtensionId = std::array<DWORD, 4>;

}  // namespace

template <class Function, class... Arguments>
LineResult TapiLineFunctions::Call(Function function, Arguments... arguments) {
  if (function == nullptr) return kOperationUnavailable;
  const LineMailbox::InsideFunction inside(mailbox_);
  return function(arguments...);
}

LineResult TapiLineFunctions::Initialize(ports::LineHandle& application, ports::LineCallback callback,
                                         std::string_view ansi_application_name,
                                         std::uint32_t& device_count) {
  if (!callback) return ports::kLineErrInvalidPointer;
  // Known before the call: a provider may report from inside it.
  const ports::LineCallback former = mailbox_.receiver();
  mailbox_.SetReceiver(std::move(callback));
  TapiLibrary::Handle handle = 0;
  DWORD devices = 0;
  const LineResult result =
      Call(library_.lineInitialize, &handle, ::GetModuleHandleW(nullptr), LineMailbox::Callback(),
           std::string(ansi_application_name).c_str(), &devices);
  if (result != 0) {
    mailbox_.SetReceiver(former);
    return result;
  }
  application_ = static_cast<ports::LineHandle>(handle);
  application = application_;
  device_count = devices;
  return 0;
}

LineResult TapiLineFunctions::NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                                  std::uint32_t lowest, std::uint32_t highest,
                                                  std::uint32_t& version) {
  DWORD agreed = 0;
  ExtensionId extension{};
  const LineResult result =
      Call(library_.lineNegotiateAPIVersion, application, device, lowest, highest, &agreed, extension.data());
  if (result == 0) version = agreed;
  return result;
}

LineResult TapiLineFunctions::GetDevCaps(ports::LineHandle application, std::uint32_t device,
                                         std::uint32_t version, std::uint32_t extension_version,
                                         std::span<std::uint8_t> dev_caps) {
  return Call(library_.lineGetDevCaps, application, device, version, extension_version, dev_caps.data());
}

LineResult TapiLineFunctions::Open(ports::LineHandle application, std::uint32_t device,
                                   ports::LineHandle& line, std::uint32_t version,
                                   std::uint32_t extension_version, std::uint32_t callback_instance,
                                   std::uint32_t privileges, std::uint32_t media_modes) {
  TapiLibrary::Handle handle = 0;
  const LineResult result = Call(library_.lineOpen, application, device, &handle, version, extension_version,
                                 callback_instance, privileges, media_modes, nullptr);
  if (result == 0) line = static_cast<ports::LineHandle>(handle);
  return result;
}

LineResult TapiLineFunctions::SetStatusMessages(ports::LineHandle line, std::uint32_t line_states,
                                                std::uint32_t address_states) {
  return Call(library_.lineSetStatusMessages, line, line_states, address_states);
}

LineResult TapiLineFunctions::GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) {
  return Call(library_.lineGetCallInfo, call, call_info.data());
}

LineResult TapiLineFunctions::Drop(ports::CallHandle call, std::string_view ansi_user_info,
                                   std::uint32_t size) {
  return Call(library_.lineDrop, call, std::string(ansi_user_info).c_str(), size);
}

LineResult TapiLineFunctions::DeallocateCall(ports::CallHandle call) {
  return Call(library_.lineDeallocateCall, call);
}

LineResult TapiLineFunctions::TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                               std::uint32_t version, std::string_view ansi_address,
                                               std::uint32_t card, std::uint32_t options,
                                               std::span<std::uint8_t> translate_output) {
  return Call(library_.lineTranslateAddress, application, device, version, std::string(ansi_address).c_str(),
              card, options, translate_output.data());
}

LineResult TapiLineFunctions::BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                            std::uint32_t country_code) {
  return Call(library_.lineBlindTransfer, call, std::string(ansi_address).c_str(), country_code);
}

LineResult TapiLineFunctions::Close(ports::LineHandle line) { return Call(library_.lineClose, line); }

LineResult TapiLineFunctions::Shutdown(ports::LineHandle application) {
  const LineResult result = Call(library_.lineShutdown, application);
  if (result == 0 && application == application_) mailbox_.SetReceiver({});
  return result;
}

}  // namespace kestro::adapters
