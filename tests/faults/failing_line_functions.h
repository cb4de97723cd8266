#pragma once

#include <utility>

#include "faults/fault_plan.h"
#include "ports/line_functions.h"
#include "ports/line_structures.h"

namespace kestro::faults {

/// Line functions of which one call fails with LINEERR_OPERATIONFAILED.
class FailingLineFunctions final : public Failing<ports::LineFunctions, Port::kLineFunctions> {
 public:
  using Failing::Failing;
  using Dword = std::uint32_t;
  using Bytes = std::span<std::uint8_t>;
  using Result = ports::LineResult;
  using Line = ports::LineHandle;
  using Call = ports::CallHandle;

  Result Initialize(Line& application, ports::LineCallback callback, std::string_view name,
                    Dword& device_count) override {
    return Fails() ? kFailed : inner_.Initialize(application, std::move(callback), name, device_count);
  }
  Result NegotiateApiVersion(Line application, Dword device, Dword lowest, Dword highest,
                             Dword& version) override {
    return Fails() ? kFailed : inner_.NegotiateApiVersion(application, device, lowest, highest, version);
  }
  Result GetDevCaps(Line application, Dword device, Dword version, Dword extension, Bytes caps) override {
    return Fails() ? kFailed : inner_.GetDevCaps(application, device, version, extension, caps);
  }
  Result Open(Line application, Dword device, Line& line, Dword version, Dword extension, Dword instance,
              Dword privileges, Dword media) override {
    if (Fails()) return kFailed;
    return inner_.Open(application, device, line, version, extension, instance, privileges, media);
  }
  Result SetStatusMessages(Line line, Dword line_states, Dword address_states) override {
    return Fails() ? kFailed : inner_.SetStatusMessages(line, line_states, address_states);
  }
  Result GetCallInfo(Call call, Bytes info) override {
    return Fails() ? kFailed : inner_.GetCallInfo(call, info);
  }
  Result Drop(Call call, std::string_view user_info, Dword size) override {
    return Fails() ? kFailed : inner_.Drop(call, user_info, size);
  }
  Result DeallocateCall(Call call) override { return Fails() ? kFailed : inner_.DeallocateCall(call); }
  Result TranslateAddress(Line application, Dword device, Dword version, std::string_view address, Dword card,
                          Dword options, Bytes output) override {
    if (Fails()) return kFailed;
    return inner_.TranslateAddress(application, device, version, address, card, options, output);
  }
  Result BlindTransfer(Call call, std::string_view address, Dword country) override {
    return Fails() ? kFailed : inner_.BlindTransfer(call, address, country);
  }
  Result Close(Line line) override { return Fails() ? kFailed : inner_.Close(line); }
  Result Shutdown(Line application) override { return Fails() ? kFailed : inner_.Shutdown(application); }

 private:
  static constexpr Result kFailed = ports::kLineErrOperationFailed;
};

}  // namespace kestro::faults
