#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"

namespace kestro::test {

// As much of a picture as is looked at: signature and size.
inline constexpr std::string_view kPicture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10\0\0\0\x10\x08\x02\0\0\0",
                                           29);
/// Goes by itself when the import is over.
inline constexpr std::string_view kImportProgress = "frmContactImportProgress";

/// A user's machine with its files and databases, and the complete application
/// that runs on it now, without a screen. What is wrong with the application is
/// collected, not thrown: its own handlers would catch what is thrown inside its
/// calls.
class ProgramWorld {
 public:
  virtual ~ProgramWorld() = default;

  [[nodiscard]] programs::PosixMachine& machine() { return machine_; }
  [[nodiscard]] scenario::Transcript& transcript() { return transcript_; }
  [[nodiscard]] scenario::Session& session() { return *session_; }
  [[nodiscard]] app::Application& application() { return *session_->application(); }
  [[nodiscard]] forms::FrontEndDriver& driver() { return session_->front_end.Driver(); }
  [[nodiscard]] forms::Form& Window(std::string_view name) { return *application().FindForm(name); }

  void Find(std::string text) { findings_.push_back(std::move(text)); }
  [[nodiscard]] const std::vector<std::string>& findings() const { return findings_; }

  /// What is done with a modal window; it has to be closed after that.
  void SetModalUser(std::function<void(forms::Form&)> use) { use_modal_ = std::move(use); }

  /// Runs something of the application; false when that was its end. Anything
  /// else that it lets out is a finding.
  bool GoesOn(const std::string& what, const std::function<void()>& work) {
    try {
      work();
    } catch (const base::ProcessEnded&) {
      return false;
    } catch (const base::RuntimeError& error) {
      Find(what + " let an error out: " + error.source() + " " + error.description());
    } catch (const std::exception& error) {
      Find(what + " let an exception out: " + error.what());
    }
    return true;
  }

 protected:
  explicit ProgramWorld(scenario::Transcript::Sink sink) : transcript_(std::move(sink)) {}

  /// Makes what the next application is started in, in place of the last one.
  void NewSession(HeadlessFrontEnd::Runner runner) {
    EndSession();
    front_end_ = std::make_unique<HeadlessFrontEnd>(
        [this](std::string_view text, int style, ports::BoxAnswer planned) {
          return AnswerBox(text, style, planned);
        },
        std::move(runner));
    session_ = std::make_unique<scenario::Session>(machine_, *front_end_, transcript_);
    session_->windows.SetModalHook(
        [this](forms::Form& window) { front_end_->Post([this, &window] { UseModal(window); }); });
  }
  /// The application is gone with all its windows, as after the end of the process. A derived
  /// world does this before its own end: the application reaches for it until then.
  void EndSession() {
    session_.reset();
    front_end_.reset();
  }
  [[nodiscard]] bool has_session() const { return session_ != nullptr; }

 private:
  virtual ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) = 0;

  void UseModal(forms::Form& window) {
    use_modal_(window);
    if (!window.visible() || window.name() == kImportProgress) return;
    Find("the window " + window.name() + " cannot be closed");
    window.Hide();
  }

  test_support::TemporaryFolder folder_;
  programs::PosixMachine machine_{folder_.path(), KESTRO_PROGRAM_DIR};
  scenario::Transcript transcript_;
  std::unique_ptr<HeadlessFrontEnd> front_end_;
  std::unique_ptr<scenario::Session> session_;
  std::function<void(forms::Form&)> use_modal_;
  std::vector<std::string> findings_;
};

}  // namespace kestro::test
