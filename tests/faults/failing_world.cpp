#include "faults/failing_world.h"

#include "base/runtime_error.h"

namespace kestro::faults {
namespace {

constexpr int kIconMask = 0x70;
// As much of a picture as is looked at: signature and size.
constexpr std::string_view kPicture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10\0\0\0\x10\x08\x02\0\0\0", 29);

}  // namespace

struct FailingWorld::Ports {
  Ports(const app::Ports& own, ports::SettingsStore& stored, FaultPlan& plan)
      : line(own.line, plan),
        settings(stored, plan),
        files(own.files, plan),
        notification_area(own.notification_area, plan),
        boxes(own.boxes, plan),
        file_dialogs(own.file_dialogs, plan),
        dialling(own.dialling, plan),
        database(own.database, plan),
        clipboard(own.clipboard, plan),
        shell_execute(own.shell_execute, plan),
        foreground(own.foreground, plan),
        log(own.log, plan) {}

  [[nodiscard]] app::Ports InFrontOf(const app::Ports& own) {
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

  FailingLineFunctions line;
  FailingSettings settings;
  FailingFiles files;
  FailingNotificationArea notification_area;
  FailingMessageBoxes boxes;
  FailingFileDialogs file_dialogs;
  FailingDialling dialling;
  FailingDatabase database;
  FailingClipboard clipboard;
  FailingShellExecute shell_execute;
  FailingForeground foreground;
  FailingLog log;
};

FailingWorld::FailingWorld()
    : machine_(folder_.path(), KESTRO_PROGRAM_DIR),
      settings_((folder_.path() / "settings.conf").string(), clock_,
                [this](const std::string& text) { settings_reports_.push_back(text); }) {
  machine_.WriteFile("C:\\Data\\photo.png", kPicture);
  settings_.CreateKey(scenario::kSettingsKey);
  settings_.SetValue(scenario::kSettingsKey, "PhoneLine", "EXT 101");
}

FailingWorld::~FailingWorld() = default;

void FailingWorld::Start(FaultPlan& plan) {
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
      failing_ = std::make_unique<Ports>(own, settings_, plan);
      return failing_->InFrontOf(own);
    });
  });
}

/// The program's event boundary takes ProcessEnded for its end; for anything else
/// it can only end without a word.
void FailingWorld::Do(const std::string& what, const std::function<void()>& work) {
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

void FailingWorld::Forget() {
  session_.reset();
  failing_.reset();
  front_end_.reset();
  messages_.clear();
  ended_ = false;
  critical_message_ = false;
}

ports::BoxAnswer FailingWorld::AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) {
  messages_.emplace_back(text);
  if ((style & kIconMask) == ports::kCritical) critical_message_ = true;
  return planned;
}

}  // namespace kestro::faults
