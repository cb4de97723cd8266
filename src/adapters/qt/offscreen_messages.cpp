#include "adapters/qt/offscreen_messages.h"

#include <iostream>

#include <QString>

namespace kestro::adapters {
namespace {

void Report(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String("This plugin does not support"))) return;
  std::cerr << qFormatLogMessage(type, context, message).toStdString() << std::endl;
}

}  // namespace

void DropOffscreenMessages() { qInstallMessageHandler(Report); }

}  // namespace kestro::adapters
