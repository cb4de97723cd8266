#include "adapters/qt/qt_notification_area.h"

#include <algorithm>

#include <QFileInfo>

#include "adapters/qt/qt_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters {

using ports::NotificationRecord;

namespace {

// Sizes of the record by the shell's version, and what the oldest one holds.
constexpr std::uint32_t kFullSize = 504;
constexpr std::uint32_t kBalloonSize = 488;
constexpr std::uint32_t kOldestSize = 88;
constexpr std::size_t kOldestTipWidth = 64;

bool HasBalloon(const NotificationRecord& record) { return record.cbSize >= kBalloonSize; }

}  // namespace

QtNotificationArea::QtNotificationArea(QtFormHost& host, const ports::AnsiCodePage& code_page,
                                       TrayBackend& backend, PathTranslator native_path)
    : host_(host), code_page_(code_page), backend_(backend), native_path_(std::move(native_path)) {
  backend_.SetListener([this](ports::IconEvent event) { Deliver(event); });
}

QtNotificationArea::~QtNotificationArea() {
  backend_.SetListener({});
  if (added_) backend_.HideIcon();
}

ports::IconHandle QtNotificationArea::LoadIconFile(std::string_view path) {
  const QString file = ToQString(native_path_(path));
  if (!QFileInfo(file).isFile()) base::RaiseFileError(base::kFileNotFound);
  const QIcon icon(file);
  if (icon.availableSizes().isEmpty()) throw base::RuntimeError(base::kInvalidPicture, "Invalid picture");
  const auto next = static_cast<ports::IconHandle>(handles_.size() + 1);
  const ports::IconHandle handle = handles_.emplace(path, next).first->second;
  icons_[handle] = icon;
  return handle;
}

bool QtNotificationArea::NotifyIcon(ports::NotificationMessage message, const NotificationRecord& record) {
  const bool known_size =
      record.cbSize == kFullSize || record.cbSize == kBalloonSize || record.cbSize == kOldestSize;
  if (!known_size) return false;
  switch (message) {
    case ports::kNimAdd:
      return Add(record);
    case ports::kNimModify:
      return Modify(record);
    case ports::kNimDelete:
      return Delete(record);
    case ports::kNimSetVersion:
      return IsThisIcon(record);
  }
  return false;
}

bool QtNotificationArea::IsThisIcon(const NotificationRecord& record) const {
  return added_ && record.hWnd == window_ && record.uID == id_;
}

bool QtNotificationArea::Add(const NotificationRecord& record) {
  if (added_ || !Take(record)) return false;
  added_ = true;
  window_ = record.hWnd;
  id_ = record.uID;
  backend_.ShowIcon(icons_[icon_], tip_, host_.PopupMenuOf(window_));
  TakeBalloon(record);
  return true;
}

bool QtNotificationArea::Modify(const NotificationRecord& record) {
  if (!IsThisIcon(record) || !Take(record)) return false;
  if ((record.uFlags & (ports::kNifIcon | ports::kNifTip)) != 0) {
    backend_.ShowIcon(icons_[icon_], tip_, host_.PopupMenuOf(window_));
  }
  TakeBalloon(record);
  return true;
}

bool QtNotificationArea::Delete(const NotificationRecord& record) {
  if (!IsThisIcon(record)) return false;
  added_ = false;
  wants_messages_ = false;
  backend_.RemoveBalloon();
  backend_.HideIcon();
  return true;
}

bool QtNotificationArea::Take(const NotificationRecord& record) {
  const bool with_icon = (record.uFlags & ports::kNifIcon) != 0;
  if (with_icon && !icons_.contains(record.hIcon)) return false;
  if (with_icon) icon_ = record.hIcon;
  if ((record.uFlags & ports::kNifTip) != 0) {
    const std::size_t width = HasBalloon(record) ? record.szTip.size() : kOldestTipWidth;
    tip_ = Text(record.szTip.data(), width);
  }
  if ((record.uFlags & ports::kNifMessage) != 0) wants_messages_ = record.uCallbackMessage != 0;
  return true;
}

void QtNotificationArea::TakeBalloon(const NotificationRecord& record) {
  if ((record.uFlags & ports::kNifInfo) == 0 || !HasBalloon(record)) return;
  Balloon balloon;
  balloon.title = Text(record.szInfoTitle.data(), record.szInfoTitle.size());
  balloon.text = Text(record.szInfo.data(), record.szInfo.size());
  balloon.timeout_ms = static_cast<int>(std::min<std::uint32_t>(record.uTimeoutOrVersion, INT32_MAX));
  if (balloon.text.isEmpty()) {
    backend_.RemoveBalloon();
  } else {
    backend_.ShowBalloon(balloon);
  }
}

/// Up to the terminating zero; of a full field the last place is lost to it.
QString QtNotificationArea::Text(const char* field, std::size_t width) const {
  const char* end = std::find(field, field + width - 1, '\0');
  return ToQString(code_page_.ToText(std::string_view(field, static_cast<std::size_t>(end - field))));
}

void QtNotificationArea::Deliver(ports::IconEvent event) {
  if (!added_ || !wants_messages_ || !callback_) return;
  host_.boundary().Run(EventBoundary::Cause::kUser, [this, event] {
    const ports::IconCallback callback = callback_;  // survives being replaced meanwhile
    callback(event);
  });
}

}  // namespace kestro::adapters
