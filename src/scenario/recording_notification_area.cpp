#include "scenario/recording_notification_area.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "scenario/quoting.h"

namespace kestro::scenario {
std::string FieldText(std::span<const char> field, const ports::AnsiCodePage& code_page) {
  const auto end = std::find(field.begin(), field.end(), '\0');
  return code_page.ToText(std::string(field.begin(), end));
}

ports::IconHandle RecordingNotificationArea::LoadIconFile(std::string_view path) {
  if (!files_.FileExists(path)) base::RaiseFileError(base::kFileNotFound);
  auto place = std::find(icon_files_.begin(), icon_files_.end(), path);
  if (place == icon_files_.end()) place = icon_files_.emplace(place, path);
  return static_cast<ports::IconHandle>(place - icon_files_.begin()) + 1;
}

bool RecordingNotificationArea::NotifyIcon(ports::NotificationMessage message,
                                           const ports::NotificationRecord& record) {
  switch (message) {
    case ports::kNimAdd:
      icon_shown_ = true;
      transcript_.Add("icon add" + Named("size", record.cbSize) + Named("flags", record.uFlags) +
                      Named("callback", record.uCallbackMessage) + FileText(record.hIcon) +
                      " tip=" + Quoted(FieldText(record.szTip, code_page_)));
      return true;
    case ports::kNimSetVersion:
      transcript_.Add("icon version " + std::to_string(record.uTimeoutOrVersion));
      return true;
    case ports::kNimModify:
      RecordModify(record);
      return true;
    case ports::kNimDelete:
      icon_shown_ = false;
      transcript_.Add("icon delete");
      return true;
  }
  return false;
}

bool RecordingNotificationArea::SendEvent(ports::IconEvent event) {
  if (!icon_shown_ || !callback_) return false;
  callback_(event);
  return true;
}

void RecordingNotificationArea::RecordModify(const ports::NotificationRecord& record) {
  if (record.uFlags != ports::kNifInfo) {
    transcript_.Add("icon modify" + Named("flags", record.uFlags) + FileText(record.hIcon));
    return;
  }
  const std::string text = FieldText(record.szInfo, code_page_);
  if (text.empty()) {
    transcript_.Add("icon balloon removed");
    return;
  }
  transcript_.Add("icon balloon title=" + Quoted(FieldText(record.szInfoTitle, code_page_)) +
                  " text=" + Quoted(text) + Named("info", record.dwInfoFlags) +
                  Named("timeout", record.uTimeoutOrVersion));
}

std::string_view RecordingNotificationArea::IconFile(ports::IconHandle icon) const {
  if (icon == 0 || icon > icon_files_.size()) return {};
  return icon_files_[icon - 1];
}

std::string RecordingNotificationArea::FileText(ports::IconHandle icon) const {
  std::string_view file = IconFile(icon);
  if (file.empty()) return " file=none";
  const std::string folder = files_.ProgramFolder() + "\\";
  if (file.starts_with(folder)) file.remove_prefix(folder.size());
  return " file=" + QuotedPath(file);
}

}  // namespace kestro::scenario
