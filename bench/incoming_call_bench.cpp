// From the line callback with OFFERING to a filled card, on the front end that draws nothing, next to one
// prepared SELECT on an open connection of the engine itself.
//   bench_incoming_call_bench [--contacts=N] [Google Benchmark options]

#include <filesystem>
#include <memory>
#include <string>

#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/posix/iconv_code_page.h"
#include "adapters/posix/posix_file_system.h"
#include "adapters/posix/posix_growing_file.h"
#include "adapters/posix/posix_shell_information.h"
#include "app/application.h"
#include "core/log_file.h"
#include "core/registry_settings_module.h"
#include "core/system_clock.h"
#include "exchange/exchange.h"
#include "ports/memory_settings_store.h"
#include "support/address_book.h"
#include "support/ratios.h"

namespace {

using namespace kestro;
using namespace kestro::bench;

/// Takes every request of the icon; the icon files are those of the build.
class QuietNotificationArea final : public ports::NotificationArea {
 public:
  bool Available() override { return true; }
  ports::IconHandle LoadIconFile(std::string_view /*path*/) override { return ++last_icon_; }
  bool NotifyIcon(ports::NotificationMessage /*message*/,
                  const ports::NotificationRecord& /*record*/) override {
    return true;
  }
  void SetCallback(ports::IconCallback /*callback*/) override {}

 private:
  ports::IconHandle last_icon_ = 0;
};

class NoBoxes final : public ports::MessageBoxes {
 public:
  ports::BoxAnswer Show(std::string_view text, int /*style*/) override {
    throw std::runtime_error("message box: " + std::string(text));
  }
};

class NoFileDialogs final : public ports::FileDialogs {
 public:
  std::optional<std::string> OpenFile(const ports::FileDialogRequest& /*request*/) override {
    return std::nullopt;
  }
};

/// What a call does not need of the desktop.
class NoDesktop final : public ports::DiallingObjects,
                        public ports::ShellExecute,
                        public ports::SystemInformationTool,
                        public ports::Clipboard {
 public:
  std::unique_ptr<ports::DiallingObject> CreateDialCom() override { return nullptr; }
  bool Open(std::string_view /*target*/) override { return false; }
  bool StartTool() override { return false; }
  ports::SystemInformation Read() override { return {}; }
  void SetText(std::string_view /*text*/) override {}
};

class OnlyInstance final : public ports::InstanceGuard {
 public:
  bool AnotherInstanceRuns() override { return false; }
  void BringOtherToFront() override {}
};

class NoEnd final : public ports::ProcessControl {
 public:
  void EndProcess() override { throw base::ProcessEnded(); }
};

/// The application on a large address book.
class Office {
 public:
  explicit Office(int count) : count_(count) {
    Fill(contacts_, count);
    settings_.CreateKey(core::kSettingsKey);
    settings_.SetValue(core::kSettingsKey, core::SettingName::kPhoneLine, "EXT 101");
    settings_.SetValue(core::kSettingsKey, "FirstStartDone", "1");
    settings_.SetValue(core::kSettingsKey, core::SettingName::kDatabasePath, contacts_.path().string());
    exchange::Device device;
    device.name = "EXT 101";
    exchange_.AddDevice(device);
    application_.Start();
  }

  void Log(bool on) { log_.SetFileLogging(on); }
  [[nodiscard]] int count() const { return count_; }

  void Offer(const std::string& number) {
    exchange::Call call;
    call.handle = kCall;
    call.caller_id = number;
    exchange_.Offer(call);
    if (application_.FindForm("ContactDetail")->visible()) return;
    throw std::runtime_error("no card for " + number);
  }
  void HangUp() { exchange_.Idle(kCall); }

 private:
  static constexpr ports::CallHandle kCall = 0x101;

  int count_;
  test_support::ContactsDatabase contacts_;
  ports::MemorySettingsStore settings_;
  adapters::HeadlessFormHost host_;
  adapters::HeadlessForegroundWindows foreground_{host_};
  exchange::Exchange exchange_{[this](auto task) { host_.Post(std::move(task)); }};
  adapters::IconvCodePage code_page_;
  adapters::PosixFileSystem files_{adapters::PathMap(), KESTRO_PROGRAM_DIR, contacts_.folder().path()};
  core::SystemClock clock_;
  adapters::PosixGrowingFile log_file_{adapters::PathMap()};
  core::LogFile log_{clock_, log_file_, {.fallback_folder = contacts_.folder().path(), .report_failure = {}}};
  QuietNotificationArea area_;
  adapters::PosixShellInformation shell_{true};
  NoBoxes boxes_;
  NoFileDialogs file_dialogs_;
  OnlyInstance instances_;
  NoDesktop desktop_;
  NoEnd process_;
  app::Application application_{{exchange_, code_page_, settings_, files_, area_, shell_, foreground_, boxes_,
                                 file_dialogs_, contacts_.database(), log_, process_, instances_, host_,
                                 desktop_, desktop_, desktop_, desktop_, clock_}};
};

void RegisterOffering(Office& office, const char* name, bool log) {
  benchmark::RegisterBenchmark(name, [&office, log](benchmark::State& state) {
    office.Log(log);
    PhoneSequence phones(office.count());
    for (auto step : state) {
      const std::string number = phones.Next();
      office.Offer(number);
      state.PauseTiming();
      office.HangUp();
      state.ResumeTiming();
    }
    office.Log(false);
  });
}

void RegisterSelect(BareAddressBook& bare, int count) {
  benchmark::RegisterBenchmark("prepared SELECT", [&bare, count](benchmark::State& state) {
    const auto statement = bare.Prepare(BareAddressBook::SelectByPhone());
    PhoneSequence phones(count);
    for (auto step : state) benchmark::DoNotOptimize(SelectByPhone(statement.get(), phones.Next()));
  });
}

}  // namespace

int main(int argument_count, char** argument_values) {
  std::unique_ptr<Office> office;
  std::unique_ptr<BareAddressBook> bare;
  return RunBenchmarks(
      argument_count, argument_values,
      [&](int count) {
        office = std::make_unique<Office>(count);
        bare = std::make_unique<BareAddressBook>(count);
        RegisterOffering(*office, "OFFERING to card, log off", false);
        RegisterOffering(*office, "OFFERING to card, log on", true);
        RegisterSelect(*bare, count);
      },
      [](const BestTimes& times) {
        times.PrintRatio("OFFERING to card, log off", "prepared SELECT", 10);
        times.PrintRatio("OFFERING to card, log on", "prepared SELECT");
      });
}
