#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/settings_file.h"
#include "core/system_clock.h"
#include "faults/failing_database.h"
#include "faults/failing_line_functions.h"
#include "faults/failing_ports.h"
#include "whole/program_world.h"

namespace kestro::faults {

inline constexpr int kIconMask = 0x70;

/// A user's machine: files, database and settings file stay from one program
/// start to the next; every start can have its fault.
class FailingWorld final : public test::ProgramWorld {
 public:
  FailingWorld() : ProgramWorld([](std::string_view) {}) {
    machine().WriteFile("C:\\Data\\photo.png", test::kPicture);
    machine().WriteFile("C:\\Data\\import.csv", "Eva Mal\xE1;Firma;;585000111\r\nPetr;;;585000112\r\n");
    settings_.CreateKey(scenario::kSettingsKey);
    settings_.SetValue(scenario::kSettingsKey, "PhoneLine", "EXT 101");
  }
  ~FailingWorld() override { Forget(); }
  FailingWorld(const FailingWorld&) = delete;
  FailingWorld& operator=(const FailingWorld&) = delete;

  /// A new program run under that plan, which must outlive it.
  void Start(FaultPlan& plan) {
    Forget();
    NewSession([](const auto& task) { task(); });
    session().exchange.AddDevice({"EXT 101"});
    Do("start", [&] {
      session().StartApplication([&](const app::Ports& own) {
        failing_ = std::make_unique<Ports>(own, settings_, plan);
        return failing_->InFront();
      });
    });
  }
  /// Runs something of the program, as long as that has not ended. The program's
  /// event boundary takes ProcessEnded for its end; for anything else that comes
  /// out it can only end without a word.
  void Do(const std::string& what, const std::function<void()>& work) {
    if (!running()) return;
    transcript().Begin(what, false);
    ended_ = !GoesOn(what, [&] {
      work();
      driver().Settle();
    });
  }
  /// Gone with all its windows, as after the end of the process.
  void Forget() {
    EndSession();
    failing_.reset();
    messages_.clear();
    ended_ = false;
    critical_message_ = false;
  }

  [[nodiscard]] bool running() const { return has_session() && !ended_; }
  /// A critical message (the one before an end) has been shown in this run.
  [[nodiscard]] bool critical_message() const { return critical_message_; }
  /// Messages shown in this run.
  [[nodiscard]] const std::vector<std::string>& messages() const { return messages_; }
  [[nodiscard]] ports::SettingsStore& settings() { return settings_; }
  /// What the settings file had to report.
  [[nodiscard]] const std::vector<std::string>& settings_reports() const { return settings_reports_; }

 private:
  struct Ports {
    Ports(const app::Ports& session, ports::SettingsStore& store, FaultPlan& faults)
        : own(session), stored(store), plan(faults) {}
    [[nodiscard]] app::Ports InFront() {
      return {line,
              own.code_page,
              settings,
              files,
              notification_area,
              own.shell,
              foreground,
              boxes,
              file_dialogs,
              database,
              log,
              own.process,
              own.instances,
              own.windows,
              dialling,
              shell_execute,
              own.system_information,
              clipboard,
              own.clock};
    }

    const app::Ports own;
    ports::SettingsStore& stored;
    FaultPlan& plan;
    FailingLineFunctions line{own.line, plan};
    FailingSettings settings{stored, plan};
    FailingFiles files{own.files, plan};
    FailingNotificationArea notification_area{own.notification_area, plan};
    FailingMessageBoxes boxes{own.boxes, plan};
    FailingFileDialogs file_dialogs{own.file_dialogs, plan};
    FailingDialling dialling{own.dialling, plan};
    FailingDatabase database{own.database, plan};
    FailingClipboard clipboard{own.clipboard, plan};
    FailingShellExecute shell_execute{own.shell_execute, plan};
    FailingForeground foreground{own.foreground, plan};
    FailingLog log{own.log, plan};
  };
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) override {
    messages_.emplace_back(text);
    if ((style & kIconMask) == ports::kCritical) critical_message_ = true;
    return planned;
  }

  core::SystemClock clock_;
  std::vector<std::string> settings_reports_;
  adapters::SettingsFile settings_{machine().NativePath("C:\\settings.conf"), clock_,
                                   [this](const std::string& text) { settings_reports_.push_back(text); }};
  std::unique_ptr<Ports> failing_;
  std::vector<std::string> messages_;
  bool ended_ = false;
  bool critical_message_ = false;
};

}  // namespace kestro::faults
