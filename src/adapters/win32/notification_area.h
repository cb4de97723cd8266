#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/win32/hidden_window.h"
#include "ports/notification_area.h"

namespace kestro::adapters {

/// The shell's notification area. Messages of the icon arrive at the given
/// window under the record's own message number. An icon that was added comes
/// back by itself when the task bar was started anew, with the picture and tip
/// it had last.
class Win32NotificationArea final : public ports::NotificationArea {
 public:
  /// Runs what an event of the user sets off; nothing comes out of it.
  using Runner = std::function<void(const std::function<void()>& handler)>;

  /// The window must outlive the object.
  Win32NotificationArea(HiddenWindow& window, Runner run);
  ~Win32NotificationArea() override;
  Win32NotificationArea(const Win32NotificationArea&) = delete;
  Win32NotificationArea& operator=(const Win32NotificationArea&) = delete;

  [[nodiscard]] bool Available() override { return true; }
  /// A file that was loaded before keeps its handle and takes the file's present image.
  ports::IconHandle LoadIconFile(std::string_view path) override;
  bool NotifyIcon(ports::NotificationMessage message, const ports::NotificationRecord& record) override;
  void SetCallback(ports::IconCallback callback) override { callback_ = std::move(callback); }

 private:
  struct IconDestroyer {
    using pointer = HICON;
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
  };
  using Icon = std::unique_ptr<HICON, IconDestroyer>;

  [[nodiscard]] HICON IconOf(ports::IconHandle handle) const;
  bool Tell(ports::NotificationMessage message, const ports::NotificationRecord& record);
  void Remember(ports::NotificationMessage message, const ports::NotificationRecord& record);
  void TaskBarCreated();
  void Deliver(LPARAM code);

  HiddenWindow& window_;
  Runner run_;
  UINT task_bar_created_;
  ports::IconCallback callback_;
  std::map<std::string, ports::IconHandle, std::less<>> handles_;  // by path
  std::map<ports::IconHandle, Icon> icons_;
  std::vector<Icon> replaced_;  // the shell may still draw them
  bool added_ = false;
  std::uint32_t version_ = 0;          // set for the icon, 0 = none
  ports::NotificationRecord present_;  // as it would have to be added anew
};

}  // namespace kestro::adapters
