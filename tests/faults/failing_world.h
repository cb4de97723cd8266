#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/settings_file.h"
#include "base/runtime_error.h"
#include "core/system_clock.h"
#include "faults/failing_database.h"
#include "faults/failing_line_functions.h"
#include "faults/failing_ports.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"

namespace kestro::faults {

inline constexpr int kIconMask = 0x70;
// As much of a picture as is looked at: signature and size.
inline constexpr std::string_view kPicture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10\0\0\0\x10\x08\x02\0\0\0",
                                           29);

/// A user's machine: files, database and settings file stay from one program
/// start to the next; every start can have its fault.
class FailingWorld {
 public:
  FailingWorld()
      : machine_(folder_.path(), KESTRO_PROGRAM_DIR),
        settings_((folder_.path() / "settings.conf").string(), clock_,
                  [this](const std::string& text) { settings_reports_.push_back(text); }) {
    machine_.WriteFile("C:\\Data\\photo.png", kPicture);
    settings_.CreateKey(scenario::kSettingsKey);
    settings_.SetValue(scenario::kSettingsKey, "PhoneLine", "EXT 101");
  }
  FailingWorld(const FailingWorld&) = delete;
  FailingWorld& operator=(const FailingWorld&) = delete;

  /// A new program run under that plan, which must outlive it.
  void Start(FaultPlan& plan) {
    Forget();
    front_end_ = std::make_unique<test::HeadlessFrontEnd>(
        [this](std::string_view text, int style, ports::BoxAnswer planned) {
          return AnswerBox(text, style, planned);
        });
    session_ = std::make_unique<scenario::Session>(machine_, *front_end_, transcript_);
    session_->exchange.AddDevice({"EXT 101"});
    session_->windows.SetModalHook(
        [this](forms::Form& window) { front_end_->Post([this, &window] { use_modal_(window); }); });
    Do("start", [&] {
      session_->StartApplication([&](const app::Ports& own) {
        failing_.reset(new Ports{own, settings_, plan});
        return failing_->InFront();
      });
    });
  }
  /// Runs something of the program; its end, and whatever it lets out, is noted.
  /// The program's event boundary takes ProcessEnded for its end; for anything else
  /// it can only end without a word.
  void Do(const std::string& what, const std::function<void()>& work) {
    if (!running()) return;
    transcript_.Begin(what, false);
    try {
      work();
      session_->front_end.Driver().Settle();
    } catch (const base::ProcessEnded&) {
      ended_ = true;
    } catch (const base::RuntimeError& error) {
      findings_.push_back(what + " let an error out: " + error.source() + " " + error.description());
    } catch (const std::exception& error) {
      findings_.push_back(what + " let an exception out: " + error.what());
    }
  }
  /// Gone with all its windows, as after the end of the process.
  void Forget() {
    session_.reset();
    failing_.reset();
    front_end_.reset();
    messages_.clear();
    ended_ = false;
    critical_message_ = false;
  }

  [[nodiscard]] bool running() const { return session_ != nullptr && !ended_; }
  /// A critical message (the one before an end) has been shown in this run.
  [[nodiscard]] bool critical_message() const { return critical_message_; }
  /// Messages shown in this run.
  [[nodiscard]] const std::vector<std::string>& messages() const { return messages_; }
  [[nodiscard]] scenario::Session& session() { return *session_; }
  [[nodiscard]] app::Application& application() { return *session_->application(); }
  [[nodiscard]] programs::PosixMachine& machine() { return machine_; }
  [[nodiscard]] ports::SettingsStore& settings() { return settings_; }
  /// What the settings file had to report.
  [[nodiscard]] const std::vector<std::string>& settings_reports() const { return settings_reports_; }
  [[nodiscard]] std::vector<std::string>& findings() { return findings_; }

  /// What is done with a modal window until it is closed.
  void SetModalUser(std::function<void(forms::Form&)> use) { use_modal_ = std::move(use); }

 private:
  struct Ports {
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
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) {
    messages_.emplace_back(text);
    if ((style & kIconMask) == ports::kCritical) critical_message_ = true;
    return planned;
  }

  test_support::TemporaryFolder folder_;
  programs::PosixMachine machine_;
  core::SystemClock clock_;
  std::vector<std::string> settings_reports_;
  adapters::SettingsFile settings_;
  scenario::Transcript transcript_{[](std::string_view) {}};
  std::unique_ptr<test::HeadlessFrontEnd> front_end_;
  std::unique_ptr<Ports> failing_;
  std::unique_ptr<scenario::Session> session_;
  std::function<void(forms::Form&)> use_modal_;
  std::vector<std::string> findings_;
  std::vector<std::string> messages_;
  bool ended_ = false;
  bool critical_message_ = false;
};

}  // namespace kestro::faults
