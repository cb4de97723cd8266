#include "faults/failing_ports.h"

#include <utility>

namespace kestro::faults {
namespace {

class FailingDialCom final : public ports::DiallingObject {
 public:
  FailingDialCom(std::unique_ptr<ports::DiallingObject> inner, FaultPlan& plan)
      : inner_(std::move(inner)), plan_(plan) {}
  std::int32_t Dial(std::string_view number) override {
    plan_.Pass(Port::kDialling);
    return inner_->Dial(number);
  }

 private:
  std::unique_ptr<ports::DiallingObject> inner_;
  FaultPlan& plan_;
};

}  // namespace

std::int32_t FailingSettings::CreateKey(std::string_view key) {
  return plan_.Fails(Port::kSettings) ? kAccessDenied : inner_.CreateKey(key);
}

std::optional<std::string> FailingSettings::QueryValue(std::string_view key, std::string_view name) {
  return plan_.Fails(Port::kSettings) ? std::nullopt : inner_.QueryValue(key, name);
}

std::int32_t FailingSettings::SetValue(std::string_view key, std::string_view name, std::string_view value) {
  return plan_.Fails(Port::kSettings) ? kAccessDenied : inner_.SetValue(key, name, value);
}

bool FailingFiles::FileExists(std::string_view path) const {
  return !plan_.Fails(Port::kFiles) && inner_.FileExists(path);
}

bool FailingFiles::FolderExists(std::string_view path) const {
  return !plan_.Fails(Port::kFiles) && inner_.FolderExists(path);
}

void FailingFiles::CreateFolder(std::string_view path) {
  plan_.Pass(Port::kFiles);
  inner_.CreateFolder(path);
}

void FailingFiles::CopyFileTo(std::string_view source, std::string_view target, bool overwrite) {
  plan_.Pass(Port::kFiles);
  inner_.CopyFileTo(source, target, overwrite);
}

int FailingFiles::FileAttributes(std::string_view path) const {
  plan_.Pass(Port::kFiles);
  return inner_.FileAttributes(path);
}

std::string FailingFiles::ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const {
  plan_.Pass(Port::kFiles);
  return inner_.ReadTextLinesJoined(path, most_bytes);
}

std::string FailingFiles::ReadStart(std::string_view path, std::size_t most_bytes) const {
  plan_.Pass(Port::kFiles);
  return inner_.ReadStart(path, most_bytes);
}

std::unique_ptr<ports::FileReader> FailingFiles::OpenForReading(std::string_view path) const {
  class Reader final : public ports::FileReader {
   public:
    Reader(std::unique_ptr<ports::FileReader> inner, FaultPlan& plan)
        : inner_(std::move(inner)), plan_(plan) {}
    std::size_t Read(std::span<char> block) override {
      plan_.Pass(Port::kFiles);
      return inner_->Read(block);
    }

   private:
    std::unique_ptr<ports::FileReader> inner_;
    FaultPlan& plan_;
  };
  plan_.Pass(Port::kFiles);
  return std::make_unique<Reader>(inner_.OpenForReading(path), plan_);
}

std::string FailingFiles::UserDataFolder() const {
  plan_.Pass(Port::kFiles);
  return inner_.UserDataFolder();
}

bool FailingNotificationArea::Available() {
  return !plan_.Fails(Port::kNotificationArea) && inner_.Available();
}

ports::IconHandle FailingNotificationArea::LoadIconFile(std::string_view path) {
  plan_.Pass(Port::kNotificationArea);
  return inner_.LoadIconFile(path);
}

bool FailingNotificationArea::NotifyIcon(ports::NotificationMessage message,
                                         const ports::NotificationRecord& record) {
  return !plan_.Fails(Port::kNotificationArea) && inner_.NotifyIcon(message, record);
}

ports::BoxAnswer FailingMessageBoxes::Show(std::string_view text, int style) {
  plan_.Pass(Port::kMessageBoxes);
  return inner_.Show(text, style);
}

std::optional<std::string> FailingFileDialogs::OpenFile(const ports::FileDialogRequest& request) {
  plan_.Pass(Port::kFileDialogs);
  return inner_.OpenFile(request);
}

std::unique_ptr<ports::DiallingObject> FailingDialling::CreateDialCom() {
  plan_.Pass(Port::kDialling);
  return std::make_unique<FailingDialCom>(inner_.CreateDialCom(), plan_);
}

void FailingClipboard::SetText(std::string_view text) {
  plan_.Pass(Port::kClipboard);
  inner_.SetText(text);
}

bool FailingShellExecute::Open(std::string_view target) {
  return !plan_.Fails(Port::kShellExecute) && inner_.Open(target);
}

bool FailingForeground::SetForegroundWindow(ports::WindowHandle window) {
  return !plan_.Fails(Port::kForeground) && inner_.SetForegroundWindow(window);
}

ports::WindowHandle FailingForeground::GetForegroundWindow() {
  return plan_.Fails(Port::kForeground) ? 0 : inner_.GetForegroundWindow();
}

std::uint32_t FailingForeground::GetWindowThread(ports::WindowHandle window) {
  return plan_.Fails(Port::kForeground) ? 0 : inner_.GetWindowThread(window);
}

void FailingForeground::AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) {
  if (!plan_.Fails(Port::kForeground)) inner_.AttachThreadInput(from, to, attach);
}

bool FailingForeground::IsIconic(ports::WindowHandle window) {
  return !plan_.Fails(Port::kForeground) && inner_.IsIconic(window);
}

void FailingForeground::ShowWindowCommand(ports::WindowHandle window, int command) {
  if (!plan_.Fails(Port::kForeground)) inner_.ShowWindowCommand(window, command);
}

std::int32_t FailingForeground::SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                                             std::uint32_t flags) {
  return plan_.Fails(Port::kForeground) ? 0 : inner_.SetWindowPos(window, insert_after, flags);
}

void FailingLog::SetFileLogging(bool enabled) {
  plan_.Pass(Port::kLog);
  inner_.SetFileLogging(enabled);
}

void FailingLog::SetLogDirectory(std::string_view directory) {
  plan_.Pass(Port::kLog);
  inner_.SetLogDirectory(directory);
}

void FailingLog::ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) {
  plan_.Pass(Port::kLog);
  inner_.ErrorEntry(number, source, description);
}

void FailingLog::LineEntry(const base::LogSource& source, std::string_view message) {
  plan_.Pass(Port::kLog);
  inner_.LineEntry(source, message);
}

}  // namespace kestro::faults
