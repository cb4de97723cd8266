#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QScreen>
#include <QTimer>
#include <gtest/gtest.h>

#include "adapters/qt/qt_event_poster.h"
#include "adapters/qt/qt_foreground_windows.h"
#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/qt_front_end_driver.h"
#include "adapters/qt/qt_message_boxes.h"
#include "adapters/qt/typing_limit.h"
#include "adapters/qt/user_events.h"
#include "base/runtime_error.h"

namespace kestro::front_end_tests {

/// What a form has heard.
using Events = std::vector<std::string>;

/// A Qt front end of its own for each test. Tests that also run on Windows use
/// what the class of the same name there has, too.
class ScreenFrontEnd : public testing::Test {
 protected:
  using Boxes = adapters::QtMessageBoxes;
  using AnsweringBoxes = adapters::QtAnsweringMessageBoxes;
  using ForegroundWindows = adapters::QtForegroundWindows;

  /// Draws the window.
  void Paint(forms::Form& form) { static_cast<void>(host_.Window(form)->grab()); }
  /// Pixels between the window and the left, top, right and bottom end of the screen's room.
  [[nodiscard]] std::array<int, 4> DistancesFromTheScreensEdges(forms::Form& form) {
    const QRect frame = host_.Window(form)->frameGeometry();
    const QRect room = host_.Window(form)->screen()->availableGeometry();
    return {frame.left() - room.left(), frame.top() - room.top(), room.right() - frame.right(),
            room.bottom() - frame.bottom()};
  }
  /// A letter as the keyboard sends it to the control.
  void TypeLetter(const forms::Control& control, char letter) {
    auto& widget = WidgetOf<QWidget>(control);
    adapters::PressKey(widget, Qt::Key_A + letter - 'a');
    QInputMethodEvent written;
    written.setCommitString(QString(QLatin1Char(letter)));
    QCoreApplication::sendEvent(&widget, &written);
  }
  template <class Widget>
  Widget& WidgetOf(const forms::Control& control) {
    return dynamic_cast<Widget&>(host_.Window(control.form())->Binding(control)->widget());
  }
  /// What remains of typing, and the place of the cursor behind it in units of UTF-16.
  static std::pair<std::u16string, int> LimitTyping(const std::u16string& before, const std::u16string& after,
                                                    int most) {
    const auto limited =
        adapters::LimitTyping(QString::fromStdU16String(before), QString::fromStdU16String(after), most);
    return {limited.text.toStdU16String(), static_cast<int>(limited.cursor)};
  }

  /// Lets events run until the condition holds; false after five seconds.
  static bool WaitUntil(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 5000) {
      RunFor(2);
    }
    return condition();
  }
  static void RunFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
  }

  adapters::EventBoundary boundary_;
  adapters::QtFormHost host_{boundary_, [](std::string_view path) { return std::string(path); }};
  adapters::QtFrontEndDriver driver_{host_};
  adapters::QtEventPoster post_{boundary_};
};

}  // namespace kestro::front_end_tests
