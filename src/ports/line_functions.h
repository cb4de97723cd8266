#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace kestro::ports {

/// One message of the line functions to the callback, as six 32-bit values.
/// `device` is a line or a call handle, depending on the message.
struct LineMessage {
  std::int32_t device = 0;
  std::int32_t message = 0;
  std::int32_t instance = 0;
  std::int32_t parameter1 = 0;
  std::int32_t parameter2 = 0;
  std::int32_t parameter3 = 0;

  friend bool operator==(const LineMessage&, const LineMessage&) = default;
};

/// Called on the user-interface thread, in the order of arrival, and never from
/// inside one of the functions below. Must not throw.
using LineCallback = std::function<void(const LineMessage&)>;

using LineHandle = std::uint32_t;
using CallHandle = std::uint32_t;
using LineResult = std::int32_t;

/// The system's line functions (TAPI, API version 1.4). A result below zero is
/// a failure (a LINEERR_ value); zero is success; a positive result of Drop or
/// BlindTransfer is a request id whose outcome arrives as LINE_REPLY.
///
/// Structures travel as byte buffers in the published layouts, little-endian;
/// the caller owns the buffer and has put its size into dwTotalSize (the first
/// double word). What comes back is not to be trusted. Texts (`ansi...`) are
/// bytes of the ANSI code page without a terminating zero.
class LineFunctions {
 public:
  virtual ~LineFunctions() = default;

  /// Messages arrive at `callback` until Shutdown. Every call registers anew.
  virtual LineResult Initialize(LineHandle& application, LineCallback callback,
                                std::string_view ansi_application_name, std::uint32_t& device_count) = 0;
  virtual LineResult NegotiateApiVersion(LineHandle application, std::uint32_t device, std::uint32_t lowest,
                                         std::uint32_t highest, std::uint32_t& version) = 0;
  virtual LineResult GetDevCaps(LineHandle application, std::uint32_t device, std::uint32_t version,
                                std::uint32_t extension_version, std::span<std::uint8_t> dev_caps) = 0;
  virtual LineResult Open(LineHandle application, std::uint32_t device, LineHandle& line,
                          std::uint32_t version, std::uint32_t extension_version,
                          std::uint32_t callback_instance, std::uint32_t privileges,
                          std::uint32_t media_modes) = 0;
  virtual LineResult SetStatusMessages(LineHandle line, std::uint32_t line_states,
                                       std::uint32_t address_states) = 0;
  virtual LineResult GetCallInfo(CallHandle call, std::span<std::uint8_t> call_info) = 0;
  virtual LineResult Drop(CallHandle call, std::string_view ansi_user_info, std::uint32_t size) = 0;
  virtual LineResult DeallocateCall(CallHandle call) = 0;
  virtual LineResult TranslateAddress(LineHandle application, std::uint32_t device, std::uint32_t version,
                                      std::string_view ansi_address, std::uint32_t card,
                                      std::uint32_t options, std::span<std::uint8_t> translate_output) = 0;
  virtual LineResult BlindTransfer(CallHandle call, std::string_view ansi_address,
                                   std::uint32_t country_code) = 0;
  virtual LineResult Close(LineHandle line) = 0;
  virtual LineResult Shutdown(LineHandle application) = 0;
};

}  // namespace kestro::ports
