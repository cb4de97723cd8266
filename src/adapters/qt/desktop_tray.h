#pragma once

#include <chrono>
#include <memory>
#include <string_view>

#include <QSystemTrayIcon>

#include "adapters/qt/desktop_notifications.h"
#include "adapters/qt/tray_backend.h"

namespace kestro::adapters {

/// The notification area of the desktop at hand: a status-notifier host or an
/// X11 tray, with balloons from the notification service where there is one.
class DesktopTray final : public TrayBackend {
 public:
  /// `application` and `open_label` (UTF-8) appear in notifications.
  DesktopTray(std::string_view application, std::string_view open_label);
  ~DesktopTray() override;
  DesktopTray(const DesktopTray&) = delete;
  DesktopTray& operator=(const DesktopTray&) = delete;

  /// Finds out what the desktop offers. To be called once, before anything
  /// else: a desktop that is still starting gets `patience` to bring its area
  /// up, because the toolkit settles for one kind of area at its first use. (An
  /// X11 tray that comes later still gets the icon.) Lets events run meanwhile.
  void Explore(std::chrono::milliseconds patience);

  [[nodiscard]] bool Available() const override;
  /// Whether balloons can be shown, by whichever way.
  [[nodiscard]] bool ShowsBalloons() const;

  void ShowIcon(const QIcon& icon, const QString& tip, QMenu* menu) override;
  void HideIcon() override;
  void ShowBalloon(const Balloon& balloon) override;
  void RemoveBalloon() override;
  void SetListener(Listener listener) override { listener_ = std::move(listener); }

 private:
  void Activated(QSystemTrayIcon::ActivationReason reason);
  void Report(ports::IconEvent event);

  QString application_;
  QString open_label_;
  Listener listener_;
  bool status_notifier_ = false;
  bool toolkit_balloon_ = false;
  std::unique_ptr<QSystemTrayIcon> icon_;
  std::unique_ptr<DesktopNotifications> notifications_;
};

}  // namespace kestro::adapters
