#include "programs/cti-windows/windows_program.h"

#include <filesystem>
#include <iostream>

#include "adapters/sqlite/engine_version.h"
#include "adapters/win32/user_folders.h"
#include "adapters/win32/wide_text.h"

namespace kestro::programs {

WindowsProgram::WindowsProgram()
    : log_(clock_, log_on_disk_,
           {adapters::LocalDataFolder(),
            [](const std::string& text) { std::cerr << "CTI: " << text << std::endl; }, "\r\n"}),
      files_(adapters::ProgramFolder(), adapters::UserDataFolder(settings_)),
      database_(database_files_,
                [](std::string_view path) { return std::filesystem::path(adapters::ToWide(path)); }),
      line_(window_, RunAs(Boundary::Cause::kSystem)),
      windows_(boundary_, [](std::string_view path) { return std::string(path); }),
      notification_area_(window_, RunAs(Boundary::Cause::kUser)),
      system_information_(adapters::DatabaseEngineVersion()),
      application_(std::make_unique<app::Application>(
          app::Ports{line_, code_page_, settings_, files_, notification_area_, shell_, foreground_, boxes_,
                     file_dialogs_, database_, log_, process_, instances_, windows_, dialling_, shell_open_,
                     system_information_, clipboard_, clock_})) {
  ListenToSystem();
}

WindowsProgram::~WindowsProgram() = default;

WindowsProgram::Runner WindowsProgram::RunAs(Boundary::Cause cause) {
  return [this, cause](const std::function<void()>& task) { boundary_.Run(cause, task); };
}

void WindowsProgram::ListenToSystem() {
  // A second instance leaves later starts to the first one; it ends by itself after its start checks.
  if (!instances_.AnotherInstanceRuns()) ListenToSecondStarts();
  window_.On(WM_QUERYENDSESSION, [](WPARAM, LPARAM) -> LRESULT { return TRUE; });
  // The session waits for the answer: what has to be done must be done when it is given.
  window_.On(WM_ENDSESSION, [this](WPARAM session_ends, LPARAM) -> LRESULT {
    if (session_ends != 0) boundary_.Run(Boundary::Cause::kSystem, [this] { application_->End(); });
    return 0;
  });
}

void WindowsProgram::ListenToSecondStarts() {
  adapters::ListenToSecondStarts(
      window_, [this] { boundary_.Run(Boundary::Cause::kUser, [this] { application_->Activate(); }); },
      [this](std::string number) {
        poster_([this, number = std::move(number)] { application_->DialLink(number); });
      });
}

int WindowsProgram::Run(bool end_after_start, const std::optional<std::string>& link_number) {
  // Queued before the start: it also ends a start that waits for an answer.
  if (end_after_start) poster_([this] { application_->End(); });
  if (link_number) application_->DialLink(*link_number);
  boundary_.Run(Boundary::Cause::kUser, [this] { application_->Start(); });
  return boundary_.RunUntilEnded();
}

}  // namespace kestro::programs
