#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/settings_file.h"
#include "core/system_clock.h"
#include "faults/failing_database.h"
#include "faults/failing_line_functions.h"
#include "faults/failing_ports.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"

namespace kestro::faults {

/// A user's machine: files, database and settings file stay from one program
/// start to the next; every start can have its fault.
class FailingWorld {
 public:
  FailingWorld();
  ~FailingWorld();
  FailingWorld(const FailingWorld&) = delete;
  FailingWorld& operator=(const FailingWorld&) = delete;

  /// A new program run under that plan, which must outlive it.
  void Start(FaultPlan& plan);
  /// Runs something of the program; its end, and whatever it lets out, is noted.
  void Do(const std::string& what, const std::function<void()>& work);
  /// Gone with all its windows, as after the end of the process.
  void Forget();

  [[nodiscard]] bool running() const { return session_ != nullptr && !ended_; }
  [[nodiscard]] bool ended() const { return ended_; }
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
  struct Ports;
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned);

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
