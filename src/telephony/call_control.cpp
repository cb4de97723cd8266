#include "telephony/tapi_functions_module.h"

// What the rest of the application asks of the current call and the current line.

namespace kestro::telephony {

using ports::line_translate_output::kBufferSize;
using ports::line_translate_output::kDialableStringOffset;
using ports::line_translate_output::kDialableStringSize;
using ports::line_translate_output::kTotalSizeToldOf;

bool TAPIFunctionsModule::CheckExternalCall() const {
  return procedure_("CheckExternalCall", [&] { return call_.IsExternal; });
}

bool TAPIFunctionsModule::CheckTransferedCall() const {
  return procedure_("CheckTransferedCall", [&] { return call_.IsTransfered; });
}

std::string TAPIFunctionsModule::GetCurrentCallerID() const {
  return procedure_("GetCurrentCallerID", [&] { return call_.CurrentCallerId; });
}

bool TAPIFunctionsModule::IsLineIdSet() {
  return procedure_("IsLineIdSet", [&] { return LineIdSet_; });
}

std::int32_t TAPIFunctionsModule::GetCurrentLineId() {
  return procedure_("GetCurrentLineId", [&] { return CurrentLineId_; });
}

void TAPIFunctionsModule::DropCall(bool keep_call) {
  procedure_("DropCall", [&] {
    if (call_.CurrentCallHandle == 0) return;
    if (!keep_call) functions_.Drop(call_.CurrentCallHandle, "", 0);
    functions_.DeallocateCall(call_.CurrentCallHandle);
    call_.CurrentCallHandle = 0;
  });
}

std::int32_t TAPIFunctionsModule::TransferCall(std::string_view destination) {
  return procedure_("TransferCall", [&] {
    std::array<std::uint8_t, kBufferSize> output{};
    ports::WriteDword(output, ports::kTotalSize, kTotalSizeToldOf);
    functions_.TranslateAddress(application_, static_cast<std::uint32_t>(GetCurrentLineId()),
                                ports::kLineApiVersion, code_page_.FromText(destination), 0, 0, output);
    const std::string dialable =
        structures_.GetTAPIStructString(output, ports::ReadDword(output, kDialableStringOffset),
                                        ports::ReadDword(output, kDialableStringSize));
    // Set whatever comes of the request: the next reply of any kind settles it.
    call_.SwitchPending = true;
    const std::string address = code_page_.FromText(dialable.substr(0, dialable.find('\0')));
    const std::int32_t result = functions_.BlindTransfer(call_.CurrentCallHandle, address, 0);
    if (result < 0) errors_.ProcessTAPIError(result);
    return result;
  });
}

}  // namespace kestro::telephony
