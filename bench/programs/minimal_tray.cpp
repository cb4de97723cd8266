// The least that a program in the notification area is made of: what the start-up benchmark compares with.

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QTimer>

int main(int argument_count, char* arguments[]) {
  QApplication application(argument_count, arguments);
  QPixmap picture(32, 32);
  picture.fill(Qt::darkBlue);
  QSystemTrayIcon icon{QIcon(picture)};
  icon.setToolTip(QStringLiteral("minimal"));
  icon.show();
  QLabel window(QStringLiteral("minimal"));
  window.resize(600, 400);
  window.winId();
  QTimer::singleShot(0, &application, &QApplication::quit);
  return QApplication::exec();
}
