#include "adapters/qt/session_bus.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

namespace kestro::adapters {

std::optional<QDBusConnection> SessionBus() {
  // Without an address the bus library would start a bus of its own that stays behind.
  const QString runtime_folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const bool known =
      !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
      (!runtime_folder.isEmpty() && QFileInfo::exists(runtime_folder + QStringLiteral("/bus")));
  if (!known) return std::nullopt;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return std::nullopt;
  return bus;
}

bool CanBeCalled(const QDBusConnection& bus, const QString& service) {
  if (bus.interface()->isServiceRegistered(service)) return true;
  const QDBusReply<QStringList> activatable = bus.interface()->activatableServiceNames();
  return activatable.isValid() && activatable.value().contains(service);
}

bool WaitForService(const QDBusConnection& bus, const QString& service, std::chrono::milliseconds patience) {
  QDBusServiceWatcher watcher(service, bus, QDBusServiceWatcher::WatchForRegistration);
  QEventLoop loop;
  bool found = false;
  QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, [&] {
    found = true;
    loop.quit();
  });
  if (bus.interface()->isServiceRegistered(service)) return true;
  if (patience.count() <= 0) return false;
  QTimer::singleShot(patience, &loop, &QEventLoop::quit);
  loop.exec();
  return found;
}

}  // namespace kestro::adapters
