// The telephony library's line functions, as programs written for API version 1.4 call them.

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "base/text.h"
#include "programs/tapi32-stand-in/stand_in.h"

namespace {

using kestro::programs::RawCallback;
using kestro::programs::StandIn;

/// Made by the first line function, on the thread that calls it. Kept until the process ends: messages that
/// come after the functions were shut down are one of the things it is for.
StandIn& TheStandIn() {
  static StandIn* const stand_in = std::make_unique<StandIn>().release();
  return *stand_in;
}

std::string Number(DWORD value) { return " " + kestro::base::Hex(value); }
std::string Text(LPCSTR text) { return text == nullptr ? " -" : " \"" + std::string(text) + "\""; }
std::string_view View(LPCSTR text) { return text == nullptr ? std::string_view() : std::string_view(text); }

/// The caller's structure: as long as its first double word says.
std::span<std::uint8_t> Buffer(void* structure) {
  if (structure == nullptr) return {};
  const DWORD size = *static_cast<const DWORD*>(structure);
  return {static_cast<std::uint8_t*>(structure), size};
}

}  // namespace

#define KESTRO_EXPORT extern "C" __declspec(dllexport) LONG WINAPI

KESTRO_EXPORT lineInitialize(DWORD* application, HINSTANCE /*instance*/, RawCallback callback, LPCSTR name,
                             DWORD* devices) {
  StandIn& stand_in = TheStandIn();
  stand_in.misbehaviour().SetCallback(callback);
  stand_in.Entered("lineInitialize", Text(name));
  std::uint32_t handle = 0;
  std::uint32_t count = 0;
  const LONG result = stand_in.exchange().Initialize(
      handle, [&stand_in](const auto& message) { stand_in.misbehaviour().PassOn(message); }, View(name),
      count);
  if (result == 0) {
    *application = handle;
    *devices = count;
  }
  return result;
}

KESTRO_EXPORT lineNegotiateAPIVersion(DWORD application, DWORD device, DWORD lowest, DWORD highest,
                                      DWORD* version, void* /*extension*/) {
  TheStandIn().Entered("lineNegotiateAPIVersion", Number(device) + Number(lowest) + Number(highest));
  std::uint32_t agreed = 0;
  const LONG result =
      TheStandIn().exchange().NegotiateApiVersion(application, device, lowest, highest, agreed);
  if (result == 0) *version = agreed;
  return result;
}

KESTRO_EXPORT lineGetDevCaps(DWORD application, DWORD device, DWORD version, DWORD extension_version,
                             void* dev_caps) {
  TheStandIn().Entered("lineGetDevCaps", Number(device));
  return TheStandIn().exchange().GetDevCaps(application, device, version, extension_version,
                                            Buffer(dev_caps));
}

KESTRO_EXPORT lineOpen(DWORD application, DWORD device, DWORD* line, DWORD version, DWORD extension_version,
                       DWORD_PTR instance, DWORD privileges, DWORD media_modes,
                       const void* /*call_parameters*/) {
  TheStandIn().Entered("lineOpen", Number(device) + Number(privileges) + Number(media_modes));
  std::uint32_t handle = 0;
  const LONG result =
      TheStandIn().exchange().Open(application, device, handle, version, extension_version,
                                   static_cast<std::uint32_t>(instance), privileges, media_modes);
  if (result == 0) *line = handle;
  return result;
}

KESTRO_EXPORT lineSetStatusMessages(DWORD line, DWORD line_states, DWORD address_states) {
  TheStandIn().Entered("lineSetStatusMessages", Number(line_states) + Number(address_states));
  return TheStandIn().exchange().SetStatusMessages(line, line_states, address_states);
}

KESTRO_EXPORT lineGetCallInfo(DWORD call, void* call_info) {
  TheStandIn().Entered("lineGetCallInfo", Number(call));
  return TheStandIn().exchange().GetCallInfo(call, Buffer(call_info));
}

KESTRO_EXPORT lineDrop(DWORD call, LPCSTR user_info, DWORD size) {
  TheStandIn().Entered("lineDrop", Number(call));
  return TheStandIn().exchange().Drop(call, View(user_info), size);
}

KESTRO_EXPORT lineDeallocateCall(DWORD call) {
  TheStandIn().Entered("lineDeallocateCall", Number(call));
  return TheStandIn().exchange().DeallocateCall(call);
}

KESTRO_EXPORT lineTranslateAddress(DWORD application, DWORD device, DWORD version, LPCSTR address, DWORD card,
                                   DWORD options, void* translate_output) {
  TheStandIn().Entered("lineTranslateAddress", Number(device) + Text(address));
  return TheStandIn().exchange().TranslateAddress(application, device, version, View(address), card, options,
                                                  Buffer(translate_output));
}

KESTRO_EXPORT lineBlindTransfer(DWORD call, LPCSTR address, DWORD country_code) {
  TheStandIn().Entered("lineBlindTransfer", Number(call) + Text(address));
  return TheStandIn().exchange().BlindTransfer(call, View(address), country_code);
}

KESTRO_EXPORT lineClose(DWORD line) {
  TheStandIn().Entered("lineClose", {});
  return TheStandIn().exchange().Close(line);
}

KESTRO_EXPORT lineShutdown(DWORD application) {
  TheStandIn().Entered("lineShutdown", {});
  return TheStandIn().exchange().Shutdown(application);
}
