#pragma once

#include <functional>
#include <optional>

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include "adapters/qt/tray_backend.h"

namespace kestro::adapters {

/// Balloons through the desktop's notification service (org.freedesktop.Notifications).
/// Unlike the toolkit's own, they report a click. One balloon at a time; nothing
/// here waits for the service.
class DesktopNotifications final : public QObject {
  Q_OBJECT

 public:
  /// `open_label` is what the service may write on a button that stands for the click.
  DesktopNotifications(QDBusConnection bus, QString application, QString open_label);

  [[nodiscard]] static const QString& ServiceName();

  void Show(const Balloon& balloon);
  void Remove();

  void OnClicked(std::function<void()> clicked) { clicked_ = std::move(clicked); }
  /// The service refused the balloon or is not there.
  void OnRefused(std::function<void(const Balloon&)> refused) { refused_ = std::move(refused); }

 private Q_SLOTS:
  void ActionInvoked(uint id, const QString& action);
  void NotificationClosed(uint id, uint reason);

 private:  // NOLINT(readability-redundant-access-specifiers): no slots any more
  enum class Markup { kUnknown, kAsking, kPlain, kMarkup };

  void AskCapabilities();
  void SendNext();
  void Send(const Balloon& balloon);
  void Sent(const Balloon& balloon, const QDBusPendingCall& answer);
  void CloseShown();
  [[nodiscard]] static QDBusMessage Call(const QString& method);

  QDBusConnection bus_;
  QString application_;
  QString open_label_;
  std::function<void()> clicked_;
  std::function<void(const Balloon&)> refused_;
  Markup markup_ = Markup::kUnknown;
  std::optional<Balloon> next_;
  bool sending_ = false;
  bool remove_when_sent_ = false;
  uint shown_ = 0;  // the service's number of the balloon, 0 = none
  QTimer closing_;  // removal waits for the event's end: a new balloon takes the old one's place
};

}  // namespace kestro::adapters
