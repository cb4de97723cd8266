#include "adapters/qt/desktop_tray.h"

#include "adapters/qt/qt_text.h"
#include "adapters/qt/session_bus.h"

namespace kestro::adapters {
namespace {

/// Only a desktop brings a status-notifier host up; a bare window manager is not worth waiting for.
std::chrono::milliseconds PatienceHere(std::chrono::milliseconds patience) {
  return qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP") ? std::chrono::milliseconds(0) : patience;
}

}  // namespace

DesktopTray::DesktopTray(std::string_view application, std::string_view open_label)
    : application_(ToQString(application)), open_label_(ToQString(open_label)) {}

DesktopTray::~DesktopTray() = default;

void DesktopTray::Explore(std::chrono::milliseconds patience) {
  if (const auto bus = SessionBus()) {
    status_notifier_ =
        WaitForService(*bus, QStringLiteral("org.kde.StatusNotifierWatcher"), PatienceHere(patience));
    notifications_ = std::make_unique<DesktopNotifications>(*bus, application_, open_label_);
    notifications_->OnClicked([this] { Report(ports::kBalloonUserClick); });
    notifications_->OnRefused([this](const Balloon& balloon) {
      if (icon_ == nullptr) return;
      toolkit_balloon_ = true;
      icon_->showMessage(balloon.title, balloon.text, QSystemTrayIcon::Information, balloon.timeout_ms);
    });
  }
}

bool DesktopTray::Available() const { return QSystemTrayIcon::isSystemTrayAvailable(); }

bool DesktopTray::ShowsBalloons() const {
  // An X11 tray gets the toolkit's own; every other way leads through the notification service.
  if (Available() && !status_notifier_) return true;
  const auto bus = SessionBus();
  return bus && CanBeCalled(*bus, DesktopNotifications::ServiceName());
}

void DesktopTray::ShowIcon(const QIcon& icon, const QString& tip, QMenu* menu) {
  if (icon_ == nullptr) {
    icon_ = std::make_unique<QSystemTrayIcon>();
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) { Activated(reason); });
    QObject::connect(icon_.get(), &QSystemTrayIcon::messageClicked, icon_.get(),
                     [this] { Report(ports::kBalloonUserClick); });
    // Status-notifier hosts open the menu themselves, and many know no other right click.
    if (status_notifier_) icon_->setContextMenu(menu);
  }
  icon_->setIcon(icon);
  icon_->setToolTip(tip);
  icon_->show();
}

void DesktopTray::HideIcon() {
  // Not destroyed: this may be the answer to one of its own signals.
  if (icon_ != nullptr) icon_->hide();
}

void DesktopTray::ShowBalloon(const Balloon& balloon) {
  if (notifications_ != nullptr) return notifications_->Show(balloon);
  if (icon_ == nullptr) return;
  toolkit_balloon_ = true;
  icon_->showMessage(balloon.title, balloon.text, QSystemTrayIcon::Information, balloon.timeout_ms);
}

void DesktopTray::RemoveBalloon() {
  if (notifications_ != nullptr) notifications_->Remove();
  // An empty message takes the toolkit's own balloon away.
  if (std::exchange(toolkit_balloon_, false) && !status_notifier_) icon_->showMessage({}, {});
}

void DesktopTray::Activated(QSystemTrayIcon::ActivationReason reason) {
  switch (reason) {
    case QSystemTrayIcon::Trigger:
      return Report(ports::kLeftButtonUp);
    case QSystemTrayIcon::DoubleClick:
      return Report(ports::kLeftDoubleClick);
    case QSystemTrayIcon::Context:
      // Where the host opens the menu, a second one must not open over it.
      if (icon_->contextMenu() == nullptr) Report(ports::kRightButtonUp);
      return;
    case QSystemTrayIcon::MiddleClick:
    case QSystemTrayIcon::Unknown:
      return;
  }
}

void DesktopTray::Report(ports::IconEvent event) {
  if (listener_) listener_(event);
}

}  // namespace kestro::adapters
