#pragma once

#include <map>
#include <string>

#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/tray_backend.h"
#include "ports/ansi_code_page.h"
#include "ports/notification_area.h"

namespace kestro::adapters {

/// Keeps the icon that notification records describe and shows it on a desktop.
/// Host, code page and backend must outlive it. One icon at a time.
class QtNotificationArea final : public ports::NotificationArea {
 public:
  QtNotificationArea(QtFormHost& host, const ports::AnsiCodePage& code_page, TrayBackend& backend,
                     PathTranslator native_path);
  ~QtNotificationArea() override;
  QtNotificationArea(const QtNotificationArea&) = delete;
  QtNotificationArea& operator=(const QtNotificationArea&) = delete;

  [[nodiscard]] bool Available() override { return backend_.Available(); }
  /// A file that was loaded before keeps its handle and takes the file's present image.
  ports::IconHandle LoadIconFile(std::string_view path) override;
  /// Refuses records of an unknown size, of another icon than the one that was
  /// added, and with an icon that is not loaded.
  bool NotifyIcon(ports::NotificationMessage message, const ports::NotificationRecord& record) override;
  void SetCallback(ports::IconCallback callback) override { callback_ = std::move(callback); }

 private:
  bool Add(const ports::NotificationRecord& record);
  bool Modify(const ports::NotificationRecord& record);
  bool Delete(const ports::NotificationRecord& record);
  [[nodiscard]] bool IsThisIcon(const ports::NotificationRecord& record) const;
  /// False when the record cannot be taken; then nothing has changed.
  bool Take(const ports::NotificationRecord& record);
  void TakeBalloon(const ports::NotificationRecord& record);
  void Deliver(ports::IconEvent event);
  [[nodiscard]] QString Text(const char* field, std::size_t width) const;

  QtFormHost& host_;
  const ports::AnsiCodePage& code_page_;
  TrayBackend& backend_;
  PathTranslator native_path_;
  ports::IconCallback callback_;
  std::map<std::string, ports::IconHandle, std::less<>> handles_;  // by path
  std::map<ports::IconHandle, QIcon> icons_;
  bool added_ = false;
  bool wants_messages_ = false;
  ports::WindowHandle window_ = 0;
  std::uint32_t id_ = 0;
  ports::IconHandle icon_ = 0;
  QString tip_;
};

}  // namespace kestro::adapters
