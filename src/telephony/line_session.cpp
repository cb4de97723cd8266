#include "base/text.h"
#include "telephony/tapi_functions_module.h"

// Opening and closing the watched line, and finding it among the line devices.

namespace kestro::telephony {

using ports::line_dev_caps::kLineNameOffset;
using ports::line_dev_caps::kLineNameSize;
using ports::line_dev_caps::kLineStates;
using ports::line_dev_caps::kProviderInfoOffset;
using ports::line_dev_caps::kProviderInfoSize;

namespace {

constexpr std::string_view kApplicationName = "KESTRO CTI";
constexpr std::uint32_t kNoExtensionVersion = 0;
constexpr std::uint32_t kNoAddressStates = 0;
/// The terminating zero stays in the provider text and so in the comparison.
constexpr std::string_view kProviderWithoutTransfer{"PANASONIC KX-TDA\0", 17};

[[noreturn]] void RaiseLineError(std::int32_t result, const char* description, const char* source) {
  throw base::RuntimeError(result, description, source);
}

}  // namespace

TAPIFunctionsModule::TAPIFunctionsModule(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.TAPIFunctionsModule", core::Spelling::kFullStop),
      messages_(needs.messages),
      texts_(needs.texts),
      settings_(needs.settings),
      flags_(needs.flags),
      functions_(needs.line),
      code_page_(needs.code_page),
      contacts_(needs.contacts),
      receiver_(needs.receiver),
      lines_(needs.lines),
      errors_(needs.log),
      structures_(needs.log, needs.code_page) {}

void TAPIFunctionsModule::StartLineListening(std::int32_t device) {
  procedure_("StartLineListening", [&] {
    try {
      InitializeLineFunctions("100");
      NegotiateVersion(device, "101", {});
      OpenLine(device);
    } catch (const base::RuntimeError&) {
      CloseLine();
      throw;
    }
  });
}

void TAPIFunctionsModule::InitializeLineFunctions(std::string_view failure_text_id) {
  const std::int32_t result = functions_.Initialize(
      application_, [this](const ports::LineMessage& message) { LineCallBack(message); },
      code_page_.FromText(kApplicationName), device_count_);
  if (result != 0) {
    errors_.ProcessTAPIError(result);
    messages_.Warning(failure_text_id);
    RaiseLineError(result, "Can not initialize TAPI", "Init TAPI");
  }
  procedure_.Trace("StartLineListening", "lineInitialize -> Success");
}

void TAPIFunctionsModule::NegotiateVersion(std::int32_t device, std::string_view failure_text_id,
                                           std::initializer_list<std::string> parameters) {
  const std::int32_t result =
      functions_.NegotiateApiVersion(application_, static_cast<std::uint32_t>(device), ports::kLineApiVersion,
                                     ports::kLineApiVersion, api_version_);
  if (result == 0) return;
  errors_.ProcessTAPIError(result);
  messages_.Warning(failure_text_id, parameters);
  RaiseLineError(result, "Can not negotiate TAPI version 1.4", "Init TAPI");
}

void TAPIFunctionsModule::OpenLine(std::int32_t device) {
  const std::int32_t opened = functions_.Open(
      application_, static_cast<std::uint32_t>(device), line_, api_version_, kNoExtensionVersion, 0,
      ports::kPrivilegeMonitor | ports::kPrivilegeOwner, ports::kMediaModeInteractiveVoice);
  if (opened != 0) {
    errors_.ProcessTAPIError(opened);
    RaiseLineError(opened, "Can not open the line!", "Line Open");
  }
  line_open_ = true;
  if (const auto result = ReadDevCaps(device, dev_caps_); result != 0) errors_.ProcessTAPIError(result);
  const std::int32_t status =
      functions_.SetStatusMessages(line_, ports::ReadDword(dev_caps_, kLineStates), kNoAddressStates);
  if (status != 0) {
    errors_.ProcessTAPIError(status);
    RaiseLineError(status, "Can not setup for status messages", "");
  }
}

std::int32_t TAPIFunctionsModule::ReadDevCaps(std::int32_t device, DevCaps& dev_caps) {
  dev_caps.fill(0);
  ports::WriteDword(dev_caps, ports::kTotalSize, static_cast<std::uint32_t>(dev_caps.size()));
  return functions_.GetDevCaps(application_, static_cast<std::uint32_t>(device), api_version_,
                               kNoExtensionVersion, dev_caps);
}

void TAPIFunctionsModule::StopLineListening() {
  procedure_("StopLineListening", [&] { CloseLine(); });
}

void TAPIFunctionsModule::CloseLine() {
  if (line_ != 0 && line_open_) {
    if (const auto result = functions_.Close(line_); result < 0) errors_.ProcessTAPIError(result);
    line_ = 0;
  }
  if (application_ != 0) {
    if (const auto result = functions_.Shutdown(application_); result < 0) errors_.ProcessTAPIError(result);
    application_ = 0;
  }
}

void TAPIFunctionsModule::ShutDownLine() {
  procedure_("ShutDownLine", [&] {
    if (!flags_.ApplicationStarted) return;
    if (flags_.CallInProgress) {
      DropCall(true);
      flags_.CallInProgress = false;
    }
    StopLineListening();
  });
}

void TAPIFunctionsModule::InitializeLine() {
  procedure_("InitializeLine", [&] {
    const std::string configured_name = settings_.GetRegistrySetting(core::SettingName::kPhoneLine, "0");
    InitializeLineFunctions("104");
    std::int32_t device = 0;
    if (ListLines(configured_name, device)) {
      SetCurrentLine(device);
      lines_.SelectLine(device);
    }
    ReadRedirectRule();
  });
}

bool TAPIFunctionsModule::ListLines(std::string_view configured_name, std::int32_t& configured_device) {
  bool found = false;
  lines_.ClearLines();
  for (std::int32_t device = 0; device < static_cast<std::int32_t>(device_count_); ++device) {
    NegotiateVersion(device, "105", {std::string(core::kLineBreak) + std::string(core::kLineBreak)});
    DevCaps dev_caps{};
    if (const auto result = ReadDevCaps(device, dev_caps); result != 0) errors_.ProcessTAPIError(result);
    const std::string name = LineNameOf(dev_caps);
    procedure_.Trace("InitializeLine", name);
    if (!name.empty() && base::EqualIgnoringCase(name, configured_name)) {
      configured_device = device;
      found = true;
    }
    lines_.AddLine(name.empty() ? "Unknown" : name);
  }
  return found;
}

std::string TAPIFunctionsModule::LineNameOf(const DevCaps& dev_caps) const {
  const std::uint32_t offset = ports::ReadDword(dev_caps, kLineNameOffset);
  if (ports::ReadDword(dev_caps, kLineNameSize) == 0 || offset == 0) return {};
  const std::string_view bytes = ports::ReadBytes(dev_caps, offset, dev_caps.size() - offset);
  const auto end = bytes.find('\0');
  if (end == std::string_view::npos) base::RaiseSubscriptOutOfRange();
  return code_page_.ToText(bytes.substr(0, end));
}

void TAPIFunctionsModule::ReadRedirectRule() {
  flags_.RedirectAllowed = false;
  DevCaps dev_caps{};
  if (const auto result = ReadDevCaps(CurrentLineId_, dev_caps); result != 0) {
    errors_.ProcessTAPIError(result);
    return;
  }
  const std::string provider =
      structures_.GetTAPIStructString(dev_caps, ports::ReadDword(dev_caps, kProviderInfoOffset),
                                      ports::ReadDword(dev_caps, kProviderInfoSize));
  flags_.RedirectAllowed = base::Trim(base::UpperCase(provider)) != kProviderWithoutTransfer;
}

void TAPIFunctionsModule::SetCurrentLine(std::int32_t device) {
  CurrentLineId_ = device;
  LineIdSet_ = true;
}

}  // namespace kestro::telephony
