#include "adapters/qt/desktop_notifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace kestro::adapters {
namespace {

const QString& Path() {
  static const QString path = QStringLiteral("/org/freedesktop/Notifications");
  return path;
}

constexpr uchar kNormalUrgency = 1;

/// Lines as the service wants them; the bus carries no zero characters.
QString Clean(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text.remove(QChar(u'\0')).trimmed();
}

}  // namespace

const QString& DesktopNotifications::ServiceName() {
  static const QString name = QStringLiteral("org.freedesktop.Notifications");
  return name;
}

DesktopNotifications::DesktopNotifications(QDBusConnection bus, QString application, QString open_label)
    : bus_(std::move(bus)), application_(std::move(application)), open_label_(std::move(open_label)) {
  bus_.connect(ServiceName(), Path(), ServiceName(), QStringLiteral("ActionInvoked"), this,
               SLOT(ActionInvoked(uint, QString)));
  bus_.connect(ServiceName(), Path(), ServiceName(), QStringLiteral("NotificationClosed"), this,
               SLOT(NotificationClosed(uint, uint)));
  closing_.setSingleShot(true);
  connect(&closing_, &QTimer::timeout, this, [this] { CloseShown(); });
}

QDBusMessage DesktopNotifications::Call(const QString& method) {
  return QDBusMessage::createMethodCall(ServiceName(), Path(), ServiceName(), method);
}

void DesktopNotifications::Show(const Balloon& balloon) {
  closing_.stop();
  remove_when_sent_ = false;
  next_ = balloon;
  SendNext();
}

void DesktopNotifications::Remove() {
  next_.reset();
  if (sending_) {
    remove_when_sent_ = true;
  } else if (shown_ != 0) {
    closing_.start(0);
  }
}

void DesktopNotifications::SendNext() {
  if (sending_ || !next_) return;
  if (markup_ == Markup::kUnknown) return AskCapabilities();
  if (markup_ == Markup::kAsking) return;
  const Balloon balloon = *next_;
  next_.reset();
  Send(balloon);
}

void DesktopNotifications::AskCapabilities() {
  markup_ = Markup::kAsking;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(Call(QStringLiteral("GetCapabilities"))), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<QStringList> reply = *call;
    const bool markup = !reply.isError() && reply.value().contains(QStringLiteral("body-markup"));
    markup_ = markup ? Markup::kMarkup : Markup::kPlain;
    call->deleteLater();
    SendNext();
    // A service that is not there now may come with another idea of markup.
    if (reply.isError()) markup_ = Markup::kUnknown;
  });
}

void DesktopNotifications::Send(const Balloon& balloon) {
  sending_ = true;
  const QString text = Clean(balloon.text);
  QDBusMessage call = Call(QStringLiteral("Notify"));
  const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(kNormalUrgency)}};
  call << application_ << shown_ << QString() << Clean(balloon.title)
       << (markup_ == Markup::kMarkup ? text.toHtmlEscaped() : text)
       << QStringList{QStringLiteral("default"), open_label_} << hints << balloon.timeout_ms;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, balloon](QDBusPendingCallWatcher* answer) {
            answer->deleteLater();
            Sent(balloon, *answer);
          });
}

void DesktopNotifications::Sent(const Balloon& balloon, const QDBusPendingCall& answer) {
  const QDBusPendingReply<uint> reply = answer;
  sending_ = false;
  shown_ = reply.isError() ? 0 : reply.value();
  const bool unwanted = std::exchange(remove_when_sent_, false);
  if (next_) {
    SendNext();
  } else if (unwanted) {
    CloseShown();
  } else if (reply.isError() && refused_) {
    refused_(balloon);
  }
}

void DesktopNotifications::CloseShown() {
  if (shown_ == 0) return;
  QDBusMessage call = Call(QStringLiteral("CloseNotification"));
  call << std::exchange(shown_, 0U);
  bus_.asyncCall(call);
}

void DesktopNotifications::ActionInvoked(uint id, const QString& action) {
  if (id != 0 && id == shown_ && action == QLatin1String("default") && clicked_) clicked_();
}

void DesktopNotifications::NotificationClosed(uint id, uint /*reason*/) {
  if (id == shown_) shown_ = 0;
}

}  // namespace kestro::adapters
