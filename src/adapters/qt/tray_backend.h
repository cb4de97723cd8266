#pragma once

#include <functional>

#include <QIcon>
#include <QString>

#include "ports/notification_area.h"

class QMenu;

namespace kestro::adapters {

struct Balloon {
  QString title;
  QString text;
  int timeout_ms = 0;
};

/// What a desktop offers for one program's icon. Calls that the desktop cannot
/// fulfil do nothing.
class TrayBackend {
 public:
  using Listener = std::function<void(ports::IconEvent)>;

  virtual ~TrayBackend() = default;
  [[nodiscard]] virtual bool Available() const = 0;
  /// Puts the icon up or changes it. `menu` (may be nullptr) is for desktops that open an icon's menu
  /// themselves; elsewhere the right click is reported.
  virtual void ShowIcon(const QIcon& icon, const QString& tip, QMenu* menu) = 0;
  virtual void HideIcon() = 0;
  /// Replaces a balloon that is still there.
  virtual void ShowBalloon(const Balloon& balloon) = 0;
  virtual void RemoveBalloon() = 0;
  /// Receives what the user does with icon and balloon.
  virtual void SetListener(Listener listener) = 0;
};

}  // namespace kestro::adapters
