#pragma once

#include <chrono>
#include <optional>

#include <QDBusConnection>

namespace kestro::adapters {

/// The user's message bus; nothing when there is none. Never starts one.
[[nodiscard]] std::optional<QDBusConnection> SessionBus();

/// Whether the service is on the bus, after waiting for it at most that long.
/// Lets events run meanwhile.
[[nodiscard]] bool WaitForService(const QDBusConnection& bus, const QString& service,
                                  std::chrono::milliseconds patience);

/// Whether the service is on the bus or would be started by a call.
[[nodiscard]] bool CanBeCalled(const QDBusConnection& bus, const QString& service);

}  // namespace kestro::adapters
