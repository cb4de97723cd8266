#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "adapters/qt/offscreen_messages.h"

// Qt tests need an application, no screen, and none of the user's own files.
int main(int argc, char** argv) {
  const QTemporaryDir home;
  for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(name, home.path().toUtf8());
  }
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  kestro::adapters::DropOffscreenMessages();
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
