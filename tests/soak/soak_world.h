#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "soak/findings.h"
#include "soak/places.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"
#include "whole/random.h"

namespace kestro::soak {

/// One machine with its files, database and settings, and the application that
/// runs on it now; another one follows when that has ended.
class SoakWorld {
 public:
  explicit SoakWorld(std::uint64_t seed);

  [[nodiscard]] test::Random& random() { return random_; }
  [[nodiscard]] Findings& findings() { return findings_; }
  [[nodiscard]] const Findings& findings() const { return findings_; }
  [[nodiscard]] scenario::Session& session() { return *session_; }
  [[nodiscard]] app::Application& application() { return *session_->application(); }
  [[nodiscard]] scenario::Transcript& transcript() { return transcript_; }

  /// Starts an application on what the one before has left; base::ProcessEnded comes through.
  void StartApplication();
  /// The address books as they were at first, and no pictures. For a world that stays small.
  void Restore();

  /// Runs something that the application does at that place, where only those messages may come.
  void At(AllowedMessages allowed, const std::function<void()>& work);
  /// Uses a modal window until it is closed.
  void SetModalUser(std::function<void(forms::Form&)> use) { use_modal_ = std::move(use); }
  /// What goes on while a message box is open.
  void SetMeanwhile(std::function<void()> work) { meanwhile_ = std::move(work); }

  /// The next thing that happens may end the application for that reason.
  void ExpectEnd(const std::string& reason) { expected_end_ = reason; }
  /// The application has ended; checks how.
  void CheckEnd();
  void ExpectNoEnd() { expected_end_.clear(); }

  /// What was last written down, for the report.
  [[nodiscard]] const std::deque<std::string>& last_lines() const { return transcript_.Tail(); }
  [[nodiscard]] const std::map<int, std::int64_t>& boxes() const { return boxes_; }
  [[nodiscard]] const std::map<std::string, std::int64_t>& ends() const { return ends_; }

 private:
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned);
  void CheckBox(std::string_view text);
  /// Sees every line of the transcript: no line is opened while one is open.
  void Watch(std::string_view line);
  void MakeDatabase(std::string_view path);
  void AddDevices();

  test::Random random_;
  Findings findings_;
  test_support::TemporaryFolder folder_;
  programs::PosixMachine machine_;
  scenario::Transcript transcript_{[this](std::string_view line) { Watch(line); }};
  std::unique_ptr<test::HeadlessFrontEnd> front_end_;
  std::unique_ptr<scenario::Session> session_;
  std::vector<AllowedMessages> places_;
  std::function<void(forms::Form&)> use_modal_;
  std::function<void()> meanwhile_;
  std::string expected_end_;
  bool told_of_error_ = false;  // message 106
  std::map<int, std::int64_t> boxes_;
  std::map<std::string, std::int64_t> ends_;
  int open_boxes_ = 0;
  bool line_is_open_ = false;
};

/// Names of the devices, the first of which is the one watched at first.
[[nodiscard]] const std::vector<std::string>& DeviceNames();
/// Numbers that contacts have.
[[nodiscard]] const std::vector<std::string>& KnownNumbers();
/// Path of the database, and of another one that the settings can be pointed at.
inline constexpr std::string_view kDatabase = "C:\\Data\\KESTRO\\KESTROCTI\\CTIDB.mdb";
inline constexpr std::string_view kOtherDatabase = "C:\\Data\\KESTRO\\KESTROCTI\\Other.mdb";

}  // namespace kestro::soak
