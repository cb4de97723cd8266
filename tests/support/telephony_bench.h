#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "contacts/contact_integration_module.h"
#include "core/messages.h"
#include "core/registry_settings_module.h"
#include "core/shared_functions.h"
#include "exchange/exchange.h"
#include "ports/memory_settings_store.h"
#include "support/latin1_code_page.h"
#include "support/log_capture.h"
#include "support/no_files.h"
#include "telephony/tapi_functions_module.h"

namespace kestro::test {

/// An exchange with one device that delivers given bytes as structures. They
/// are copied over the start of the caller's buffer.
class ByteLineFunctions final : public exchange::Exchange {
 public:
  ByteLineFunctions() : Exchange([](const std::function<void()>& task) { task(); }) { AddDevice({}); }

  std::vector<std::uint8_t> call_info;
  std::vector<std::uint8_t> dev_caps;
  std::vector<std::uint8_t> translate_output;

  ports::LineResult GetDevCaps(ports::LineHandle, std::uint32_t, std::uint32_t, std::uint32_t,
                               std::span<std::uint8_t> buffer) override {
    return Copy(dev_caps, buffer);
  }
  ports::LineResult GetCallInfo(ports::CallHandle, std::span<std::uint8_t> buffer) override {
    return Copy(call_info, buffer);
  }
  ports::LineResult TranslateAddress(ports::LineHandle, std::uint32_t, std::uint32_t, std::string_view,
                                     std::uint32_t, std::uint32_t, std::span<std::uint8_t> buffer) override {
    return Copy(translate_output, buffer);
  }
  ports::LineResult BlindTransfer(ports::CallHandle, std::string_view, std::uint32_t) override { return 2; }

 private:
  static ports::LineResult Copy(const std::vector<std::uint8_t>& bytes, std::span<std::uint8_t> buffer) {
    std::copy_n(bytes.begin(), std::min(bytes.size(), buffer.size()), buffer.begin());
    return 0;
  }
};

/// The telephony module among stand-ins: no database (every look-up fails), no
/// windows; keeps what the module asks of the rest of the application.
class TelephonyBench final : public telephony::LineEventReceiver,
                             public telephony::LineList,
                             private ports::Database,
                             private ports::MessageBoxes,
                             private contacts::DatabasePathSource {
 public:
  std::vector<std::string> events;
  std::vector<std::string> line_names;
  LogCapture capture;
  ByteLineFunctions functions;

 private:
  Latin1CodePage code_page_;
  ports::MemorySettingsStore store_;
  core::LogModule log_{capture};
  core::Localization texts_{log_};
  core::Messages messages_{texts_, *this};
  core::RegistrySettingsModule registry_{log_, store_};
  NoFiles files_;
  core::SharedFunctions shared_{log_, files_};
  contacts::ContactIntegrationModule contacts_{log_, shared_, *this, files_, *this};

 public:
  core::ApplicationFlags flags;
  telephony::TAPIFunctionsModule line{
      {log_, messages_, texts_, registry_, flags, functions, code_page_, contacts_, *this, *this}};

  void OnIncommingCall() override { events.emplace_back("incoming"); }
  void OnCallAccept() override { events.emplace_back("accept"); }
  void OnCallDisconnect() override { events.emplace_back("disconnect"); }
  std::string GetInternalCallerName(std::string_view) override { return {}; }
  void ShowBaloonToolTip(std::string_view title, std::string_view text) override {
    events.push_back("balloon " + std::string(title) + "/" + std::string(text));
  }
  bool DoSupportTrayBaloon() override { return true; }
  void ShowInternallCalDialog(std::string_view) override { events.emplace_back("internal"); }
  void ShutDownApplication(const base::RuntimeError& error) override {
    events.push_back("shut down " + std::to_string(error.number()));
  }
  void ClearLines() override { line_names.clear(); }
  void AddLine(std::string_view name) override { line_names.emplace_back(name); }
  void SelectLine(std::int32_t) override {}

 private:
  [[noreturn]] static void Refuse() { throw base::RuntimeError(base::kDatabaseError, "no database here"); }
  std::unique_ptr<ports::Connection> CreateConnection() override { Refuse(); }
  std::unique_ptr<ports::Command> CreateCommand() override { Refuse(); }
  ports::BoxAnswer Show(std::string_view text, int) override {
    events.push_back("box " + std::string(text));
    return ports::BoxAnswer::kOk;
  }
  std::string DatabasePath() const override { return "C:\\Data\\CTIDB.mdb"; }
};

}  // namespace kestro::test
