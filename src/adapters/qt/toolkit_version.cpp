#include "adapters/qt/toolkit_version.h"

#include <QGuiApplication>
#include <QtGlobal>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {

std::string ToolkitVersion() {
  std::string text = std::string("Qt ") + qVersion();
  const QString platform = QGuiApplication::platformName();
  if (!platform.isEmpty()) text += ", " + ToUtf8(platform);
  return text;
}

}  // namespace kestro::adapters
