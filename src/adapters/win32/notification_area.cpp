#include "adapters/win32/notification_area.h"

#include "adapters/win32/notification_record.h"
#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters {

Win32NotificationArea::Win32NotificationArea(HiddenWindow& window, Runner run)
    : window_(window), run_(std::move(run)), task_bar_created_(::RegisterWindowMessageW(L"TaskbarCreated")) {
  window_.On(task_bar_created_, [this](WPARAM, LPARAM) -> LRESULT {
    TaskBarCreated();
    return 0;
  });
}

Win32NotificationArea::~Win32NotificationArea() {
  window_.On(task_bar_created_, {});
  if (!added_) return;
  Tell(ports::kNimDelete, present_);
  window_.On(present_.uCallbackMessage, {});
}

ports::IconHandle Win32NotificationArea::LoadIconFile(std::string_view path) {
  const std::wstring file = ToWide(path);
  if (::GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES)
    base::RaiseFileError(base::kFileNotFound);
  Icon icon(
      static_cast<HICON>(::LoadImageW(nullptr, file.c_str(), IMAGE_ICON, ::GetSystemMetrics(SM_CXSMICON),
                                      ::GetSystemMetrics(SM_CYSMICON), LR_LOADFROMFILE)));
  if (!icon) throw base::RuntimeError(base::kInvalidPicture, "Invalid picture");
  const auto next = static_cast<ports::IconHandle>(handles_.size() + 1);
  const ports::IconHandle handle = handles_.emplace(path, next).first->second;
  Icon& place = icons_[handle];
  place.swap(icon);
  replaced_.clear();
  if (icon) replaced_.push_back(std::move(icon));
  return handle;
}

HICON Win32NotificationArea::IconOf(ports::IconHandle handle) const {
  const auto found = icons_.find(handle);
  return found == icons_.end() ? nullptr : found->second.get();
}

bool Win32NotificationArea::Tell(ports::NotificationMessage message,
                                 const ports::NotificationRecord& record) {
  NOTIFYICONDATAA native = NativeRecord(record, window_.handle(), IconOf(record.hIcon));
  return native.cbSize != 0 && ::Shell_NotifyIconA(message, &native) != FALSE;
}

bool Win32NotificationArea::NotifyIcon(ports::NotificationMessage message,
                                       const ports::NotificationRecord& record) {
  if (message == ports::kNimAdd) {
    window_.On(record.uCallbackMessage, [this](WPARAM, LPARAM code) -> LRESULT {
      Deliver(code);
      return 0;
    });
  }
  const bool done = Tell(message, record);
  Remember(message, record);
  return done;
}

/// Also of requests that the shell refused: at the start of a session it may not be up yet, and says
/// that it is by creating the task bar.
void Win32NotificationArea::Remember(ports::NotificationMessage message,
                                     const ports::NotificationRecord& record) {
  switch (message) {
    case ports::kNimAdd:
      added_ = true;
      present_ = record;
      break;
    case ports::kNimModify:
      if ((record.uFlags & ports::kNifIcon) != 0) present_.hIcon = record.hIcon;
      if ((record.uFlags & ports::kNifTip) != 0) present_.szTip = record.szTip;
      break;
    case ports::kNimSetVersion:
      version_ = record.uTimeoutOrVersion;
      break;
    case ports::kNimDelete:
      added_ = false;
      break;
  }
}

void Win32NotificationArea::TaskBarCreated() {
  if (!added_) return;
  Tell(ports::kNimAdd, present_);
  if (version_ == 0) return;
  ports::NotificationRecord record = present_;
  record.uTimeoutOrVersion = version_;
  Tell(ports::kNimSetVersion, record);
}

void Win32NotificationArea::Deliver(LPARAM code) {
  run_([this, code] {
    const ports::IconCallback callback = callback_;  // survives being replaced meanwhile
    if (added_ && callback) callback(static_cast<std::uint32_t>(code));
  });
}

}  // namespace kestro::adapters
