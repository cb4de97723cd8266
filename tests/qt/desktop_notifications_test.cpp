#include "adapters/qt/desktop_notifications.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QStandardPaths>

#include "adapters/qt/session_bus.h"
#include "screen_front_end.h"

// On a message bus of its own, with a notification service that the test plays.

namespace kestro::front_end_tests {
namespace {

using Calls = std::vector<std::string>;

class FakeService final : public QDBusVirtualObject {
 public:
  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const QVariantList arguments = message.arguments();
    QVariantList reply;
    if (message.member() == QLatin1String("GetCapabilities")) {
      reply << capabilities;
    } else if (message.member() == QLatin1String("Notify")) {
      const uint replaced = arguments[1].toUInt();
      calls.push_back("notify " + std::to_string(replaced) + " \"" + arguments[3].toString().toStdString() +
                      "\" \"" + arguments[4].toString().toStdString() + "\" " +
                      arguments[5].toStringList().join(QLatin1Char('=')).toStdString() + " " +
                      std::to_string(arguments[7].toInt()));
      if (refuse) {
        return connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("full")));
      }
      reply << (replaced != 0 ? replaced : ++last_id);
    } else {
      calls.push_back("close " + std::to_string(arguments[0].toUInt()));
    }
    return connection.send(message.createReply(reply));
  }

  QStringList capabilities{QStringLiteral("body")};
  bool refuse = false;
  uint last_id = 40;
  Calls calls;
};

class DesktopNotifications : public ScreenFrontEnd {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty()) {
      GTEST_SKIP() << "no dbus-daemon here";
    }
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                  QStringLiteral("--print-address")});
    ASSERT_TRUE(daemon_.waitForReadyRead(5000));
    const QString address = QString::fromLatin1(daemon_.readLine()).trimmed();
    client_bus_ = QDBusConnection::connectToBus(address, QStringLiteral("client"));
    service_bus_ = QDBusConnection::connectToBus(address, QStringLiteral("service"));
    ASSERT_TRUE(client_bus_.isConnected() && service_bus_.isConnected());
    StartService();
    shown_ = std::make_unique<adapters::DesktopNotifications>(client_bus_, QStringLiteral("Program"),
                                                              QStringLiteral("Open"));
    shown_->OnClicked([this] { service_.calls.emplace_back("clicked"); });
    shown_->OnRefused([this](const adapters::Balloon& balloon) {
      service_.calls.push_back("refused " + balloon.title.toStdString());
    });
  }
  void TearDown() override {
    shown_.reset();
    QDBusConnection::disconnectFromBus(QStringLiteral("client"));
    QDBusConnection::disconnectFromBus(QStringLiteral("service"));
    daemon_.kill();
    daemon_.waitForFinished();
  }
  void StartService() {
    ASSERT_TRUE(
        service_bus_.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &service_));
    ASSERT_TRUE(service_bus_.registerService(QStringLiteral("org.freedesktop.Notifications")));
  }
  void Signal(const char* name, const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                     QStringLiteral("org.freedesktop.Notifications"),
                                                     QString::fromLatin1(name));
    signal.setArguments(arguments);
    ASSERT_TRUE(service_bus_.send(signal));
  }
  void ExpectCalls(const Calls& expected) {
    WaitUntil([&] { return service_.calls.size() >= expected.size(); });
    RunFor(40);  // nothing may follow
    EXPECT_EQ(service_.calls, expected);
    service_.calls.clear();
  }

  QProcess daemon_;
  QObject context_;
  QDBusConnection client_bus_{QString()};
  QDBusConnection service_bus_{QString()};
  FakeService service_;
  std::unique_ptr<adapters::DesktopNotifications> shown_;
};

adapters::Balloon ABalloon(const char* title) {
  return {QString::fromUtf8(title), QStringLiteral("Smith & Sons\r\n<b>\r\n  "), 5000};
}

TEST_F(DesktopNotifications, ShowsReplacesAndRemoves) {
  shown_->Show(ABalloon("one"));
  ExpectCalls({"notify 0 \"one\" \"Smith & Sons\n<b>\" default=Open 5000"});
  // What the program does for every balloon: the old one is removed, the new one shown.
  shown_->Remove();
  shown_->Show(ABalloon("two"));
  ExpectCalls({"notify 41 \"two\" \"Smith & Sons\n<b>\" default=Open 5000"});
  shown_->Remove();
  ExpectCalls({"close 41"});
  shown_->Remove();
  ExpectCalls({});
  shown_->Show(ABalloon("three"));
  shown_->Remove();  // before the service has even answered
  ExpectCalls({"notify 0 \"three\" \"Smith & Sons\n<b>\" default=Open 5000", "close 42"});
}

TEST_F(DesktopNotifications, MarkupIsEscapedWhereTheServiceReadsIt) {
  service_.capabilities.append(QStringLiteral("body-markup"));
  shown_->Show(ABalloon("one"));
  ExpectCalls({"notify 0 \"one\" \"Smith &amp; Sons\n&lt;b&gt;\" default=Open 5000"});
}

TEST_F(DesktopNotifications, OnlyAClickOnTheBalloonThatIsThereCounts) {
  shown_->Show(ABalloon("one"));
  ExpectCalls({"notify 0 \"one\" \"Smith & Sons\n<b>\" default=Open 5000"});
  Signal("ActionInvoked", {40U, QStringLiteral("default")});
  Signal("ActionInvoked", {41U, QStringLiteral("other")});
  Signal("ActionInvoked", {41U, QStringLiteral("default")});
  Signal("NotificationClosed", {41U, 1U});
  Signal("ActionInvoked", {41U, QStringLiteral("default")});
  ExpectCalls({"clicked"});
  shown_->Show(ABalloon("two"));
  ExpectCalls({"notify 0 \"two\" \"Smith & Sons\n<b>\" default=Open 5000"});
}

TEST_F(DesktopNotifications, ARefusedBalloonIsHandedBack) {
  service_.refuse = true;
  shown_->Show(ABalloon("one"));
  ExpectCalls({"notify 0 \"one\" \"Smith & Sons\n<b>\" default=Open 5000", "refused one"});
  service_bus_.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
  shown_->Show(ABalloon("two"));
  ExpectCalls({"refused two"});
}

TEST_F(DesktopNotifications, AServiceIsWaitedForALimitedTime) {
  using std::chrono::milliseconds;
  const QString late = QStringLiteral("org.example.Late");
  EXPECT_FALSE(adapters::WaitForService(client_bus_, late, milliseconds(0)));
  EXPECT_FALSE(adapters::WaitForService(client_bus_, late, milliseconds(50)));
  QTimer::singleShot(20, &context_, [&] { service_bus_.registerService(late); });
  EXPECT_TRUE(adapters::WaitForService(client_bus_, late, milliseconds(5000)));
  EXPECT_TRUE(adapters::CanBeCalled(client_bus_, late));
}

}  // namespace
}  // namespace kestro::front_end_tests
